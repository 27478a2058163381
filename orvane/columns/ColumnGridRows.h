#pragma once

#include <QtGlobal>

namespace Orvane {

// The rows of the column grid, one per attribute of a column, numbered from 1.
namespace ColumnGridRows {

constexpr qint32 Name = 1;
constexpr qint32 Type = 2;
constexpr qint32 Field = 3;
constexpr qint32 Key = 4;
constexpr qint32 KeyField = 5;
constexpr qint32 Position = 6;
constexpr qint32 Count = 6;

} // namespace ColumnGridRows

} // namespace Orvane
