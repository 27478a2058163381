#pragma once

#include <QString>
#include <functional>
#include <optional>

namespace Orvane {

class CDataSourcesColumns;

// The checks a column layout must pass before the document is saved.
namespace ColumnValidation {

// The grid as the user sees it: its column count and the text of a cell (1-based column, row).
struct GridTexts {
    qint32 columnCount = 0;
    std::function<QString(qint32 column, qint32 row)> text;
};

// What failed first, and the cell to take the user to; column 0 and row 0 name no cell.
struct Failure {
    QString message;
    qint32 column = 0;
    qint32 row = 0;
};

// Runs the checks in their fixed order and returns the first failure, or nothing.
std::optional<Failure> FirstFailure(const CDataSourcesColumns& columns, const GridTexts& grid);

} // namespace ColumnValidation

} // namespace Orvane
