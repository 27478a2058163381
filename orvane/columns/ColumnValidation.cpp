#include "orvane/columns/ColumnValidation.h"

#include "orvane/columns/ColumnGridRows.h"
#include "orvane/host/IApplication.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"

#include <QHash>

namespace Orvane::ColumnValidation {

namespace {

const QString UniquePositionHint =
    QStringLiteral("A unique position between 1 and 500 must be specified");

QString number(qint32 value) {
    return QString::number(value);
}

// The position as the user typed it; anything that is not a number counts as none.
qint32 positionOf(const QString& text) {
    bool ok = false;
    const qint32 value = text.trimmed().toInt(&ok);
    return ok ? value : 0;
}

std::optional<Failure> checkGridColumn(const GridTexts& grid, qint32 i) {
    if (grid.text(i, ColumnGridRows::Name).isEmpty()) {
        return Failure{QStringLiteral("Column ") + number(i) +
                           QStringLiteral(" has no name.  Please provide a name or delete the "
                                          "column."),
                       i, ColumnGridRows::Name};
    }
    if (positionOf(grid.text(i, ColumnGridRows::Position)) < 1) {
        return Failure{QStringLiteral("Column ") + number(i) +
                           QStringLiteral(" has no position specified.") + MsgBoxLineBreak +
                           UniquePositionHint,
                       i, ColumnGridRows::Position};
    }
    const QString field = grid.text(i, ColumnGridRows::Field);
    if (field.isEmpty())
        return std::nullopt;
    for (qint32 j = i + 1; j <= grid.columnCount; ++j) {
        if (field.compare(grid.text(j, ColumnGridRows::Field), Qt::CaseInsensitive) == 0) {
            return Failure{
                QStringLiteral("Column ") + number(i) + QStringLiteral(" and column ") + number(j) +
                    QStringLiteral(" have duplicate field names specified.") + MsgBoxLineBreak +
                    QStringLiteral("Each field must have a unique name."),
                0, 0};
        }
    }
    return std::nullopt;
}

std::optional<Failure> checkKeys(const CDataSourcesColumns& columns, const GridTexts& grid) {
    QHash<qint32, qint32> keyFieldByOrdinal;
    for (const auto& column : columns) {
        if (!column->Is_Key() || column->KeyDeleted())
            continue;
        const QString name = column->Column_Name();
        if (keyFieldByOrdinal.value(column->Key_Ordinal()) != 0) {
            return Failure{QStringLiteral("Column ") + name +
                               QStringLiteral(" has a duplicate key specified."),
                           column->ColPosition(), ColumnGridRows::Key};
        }
        // A deleted column has no grid column to show its key field in, and frees its ordinal.
        if (column->ColumnDeleted())
            continue;
        keyFieldByOrdinal.insert(column->Key_Ordinal(), column->KeyFld_Id());
        if (grid.text(column->ColPosition(), ColumnGridRows::KeyField).isEmpty()) {
            return Failure{QStringLiteral("Column ") + name +
                               QStringLiteral(" is missing a key field."),
                           column->ColPosition(), ColumnGridRows::KeyField};
        }
    }
    return std::nullopt;
}

std::optional<Failure> checkPositions(const CDataSourcesColumns& columns) {
    for (const auto& column : columns) {
        if (columns.PositionInUse(column->Position(), column->Column_Name())) {
            return Failure{QStringLiteral("Column ") + column->Column_Name() +
                               QStringLiteral(" has a duplicate position spceified.") +
                               MsgBoxLineBreak + UniquePositionHint,
                           column->ColPosition(), ColumnGridRows::Position};
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<Failure> FirstFailure(const CDataSourcesColumns& columns, const GridTexts& grid) {
    if (columns.Count() < 1)
        return Failure{QStringLiteral("At least one column must be defined"), 0, 0};
    for (qint32 i = 1; i <= grid.columnCount; ++i) {
        if (auto failure = checkGridColumn(grid, i))
            return failure;
    }
    if (auto failure = checkKeys(columns, grid))
        return failure;
    return checkPositions(columns);
}

} // namespace Orvane::ColumnValidation
