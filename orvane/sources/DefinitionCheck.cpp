#include "orvane/sources/DefinitionCheck.h"

#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"
#include "orvane/model/DataTypes.h"
#include "orvane/sources/SourceHead.h"
#include "orvane/sources/ValueKind.h"

#include <QCoreApplication>
#include <QSet>

namespace Orvane::DefinitionCheck {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("Orvane::DefinitionCheck", text);
}

bool firstRecordIsHeader(const QStringList& first) {
    QSet<QString> seen;
    for (const QString& value : first) {
        const QString name = value.trimmed();
        if (ClassifyValue(name) != ValueKind::Text || seen.contains(name))
            return false;
        seen.insert(name);
    }
    return !first.isEmpty();
}

bool fits(const QString& typeCode, ValueKind kind) {
    if (kind == ValueKind::Empty)
        return true;
    if (typeCode == QLatin1String("I"))
        return kind == ValueKind::Integer;
    if (typeCode == QLatin1String("F"))
        return kind == ValueKind::Integer || kind == ValueKind::Float;
    if (typeCode == QLatin1String("D"))
        return kind == ValueKind::Date;
    return true;
}

// The first sample value that the column's type cannot read, with its record number.
QString badValue(const CDataSourcesColumn& column, const SourceHead& head, qsizetype firstData) {
    const qsizetype field = column.Position() - 1;
    for (qsizetype r = firstData; r < head.records.size(); ++r) {
        const QStringList& record = head.records.at(r);
        if (field < record.size() && !fits(column.Column_Type(), ClassifyValue(record.at(field))))
            return tr("Column \"%1\" is %2, but record %3 holds \"%4\".")
                .arg(column.Column_Name(), mOrvane::DataTypeNameFromCode(column.Column_Type()))
                .arg(r + 1)
                .arg(record.at(field));
    }
    return {};
}

} // namespace

QStringList Check(const CDataSourcesColumns& columns, const QString& path,
                  const QString& storedDelimiter) {
    const SourceHead head = ReadSourceHead(path, storedDelimiter, SampleRecords + 1);
    if (!head.error.isEmpty())
        return {head.error};
    if (head.records.isEmpty())
        return {tr("The file \"%1\" is empty.").arg(path)};

    QStringList differences;
    const QStringList& first = head.records.first();
    const bool header = firstRecordIsHeader(first);
    const qint32 width = head.Width();
    QSet<qint32> defined;
    for (qint32 i = 1; i <= columns.Count(); ++i) {
        const auto column = columns.Item(i);
        if (column->ColumnDeleted())
            continue;
        const qint32 position = column->Position();
        defined.insert(position);
        if (position > width) {
            differences << tr("Column \"%1\" is at position %2, but the file's records have %3 "
                              "fields.")
                               .arg(column->Column_Name())
                               .arg(position)
                               .arg(width);
            continue;
        }
        const QString inFile =
            position - 1 < first.size() ? first.at(position - 1).trimmed() : QString();
        // The time stamp keeps its own name whatever the file calls that field.
        if (header && !column->IsTimeStamp() &&
            inFile.compare(column->Column_Name(), Qt::CaseInsensitive) != 0)
            differences << tr("Column \"%1\" is at position %2, where the file's header has "
                              "\"%3\".")
                               .arg(column->Column_Name())
                               .arg(position)
                               .arg(inFile);
        const QString bad = badValue(*column, head, header ? 1 : 0);
        if (!bad.isEmpty())
            differences << bad;
    }
    for (qint32 position = 1; position <= width; ++position) {
        if (defined.contains(position))
            continue;
        if (header && position - 1 < first.size())
            differences << tr("The file's field %1 (\"%2\") is in no column of the definition.")
                               .arg(position)
                               .arg(first.at(position - 1).trimmed());
        else
            differences
                << tr("The file's field %1 is in no column of the definition.").arg(position);
    }
    return differences;
}

} // namespace Orvane::DefinitionCheck
