#pragma once

#include <QString>
#include <QStringList>

namespace Orvane {

class CDataSourcesColumns;

// Compares a definition's columns with the file it describes: the header's names at the columns'
// positions, the number of fields, and a sample of values read as the columns' types. Returns
// the differences in plain words; an empty list when the file fits.
namespace DefinitionCheck {

constexpr qint32 SampleRecords = 1000;

QStringList Check(const CDataSourcesColumns& columns, const QString& path,
                  const QString& storedDelimiter);

} // namespace DefinitionCheck

} // namespace Orvane
