#include "orvane/columns/ColumnValidation.h"

#include "orvane/columns/ColumnGridModel.h"
#include "orvane/columns/ColumnGridRows.h"
#include "orvane/host/IApplication.h"
#include "orvane/model/CDataSourcesColumn.h"
#include "orvane/model/CDataSourcesColumns.h"

#include <QCoreApplication>
#include <QHash>
#include <vector>

namespace Orvane::ColumnValidation {

namespace {

// The texts of this file, in one translation context.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Orvane::ColumnValidation)
};

QString uniquePositionHint() {
    return Texts::tr("A unique position between 1 and 500 must be specified");
}

// For each grid column with a field, the next grid column whose field has the same name without
// regard to case; 0 when there is none.
std::vector<qint32> nextSameField(const ColumnGridModel& grid) {
    std::vector<qint32> next(static_cast<std::size_t>(grid.ColumnCount()) + 1, 0);
    QHash<QString, qint32> nearestAfter;
    nearestAfter.reserve(grid.ColumnCount());
    for (qint32 i = grid.ColumnCount(); i >= 1; --i) {
        const QString field = grid.Text(i, ColumnGridRows::Field);
        if (field.isEmpty())
            continue;
        qint32& nearest = nearestAfter[field.toCaseFolded()];
        next[static_cast<std::size_t>(i)] = nearest;
        nearest = i;
    }
    return next;
}

std::optional<Failure> checkGridColumn(const ColumnGridModel& grid, qint32 i, qint32 sameField) {
    if (grid.ColumnAt(i)->Column_Name().isEmpty()) {
        return Failure{
            Texts::tr("Column %1 has no name.  Please provide a name or delete the column.").arg(i),
            i, ColumnGridRows::Name};
    }
    if (grid.PositionShown(i) < 1) {
        return Failure{Texts::tr("Column %1 has no position specified.").arg(i) + MsgBoxLineBreak +
                           uniquePositionHint(),
                       i, ColumnGridRows::Position};
    }
    if (sameField == 0)
        return std::nullopt;
    return Failure{Texts::tr("Column %1 and column %2 have duplicate field names specified.")
                           .arg(i)
                           .arg(sameField) +
                       MsgBoxLineBreak + Texts::tr("Each field must have a unique name."),
                   0, 0};
}

std::optional<Failure> checkGrid(const ColumnGridModel& grid) {
    const std::vector<qint32> next = nextSameField(grid);
    for (qint32 i = 1; i <= grid.ColumnCount(); ++i) {
        if (auto failure = checkGridColumn(grid, i, next[static_cast<std::size_t>(i)]))
            return failure;
    }
    return std::nullopt;
}

std::optional<Failure> checkKeys(const CDataSourcesColumns& columns, const ColumnGridModel& grid) {
    QHash<qint32, qint32> keyFieldByOrdinal;
    keyFieldByOrdinal.reserve(columns.Count());
    for (const auto& column : columns) {
        if (!column->IsLiveKey())
            continue;
        const QString& name = column->Column_Name();
        if (keyFieldByOrdinal.value(column->Key_Ordinal()) != 0) {
            return Failure{Texts::tr("Column %1 has a duplicate key specified.").arg(name),
                           column->ColPosition(), ColumnGridRows::Key};
        }
        // A deleted column has no grid column to show its key field in, and frees its ordinal.
        if (column->ColumnDeleted())
            continue;
        keyFieldByOrdinal.insert(column->Key_Ordinal(), column->KeyFld_Id());
        if (grid.Text(column->ColPosition(), ColumnGridRows::KeyField).isEmpty()) {
            return Failure{Texts::tr("Column %1 is missing a key field.").arg(name),
                           column->ColPosition(), ColumnGridRows::KeyField};
        }
    }
    return std::nullopt;
}

// Who holds a position: the collection's PositionInUse asks for a holder whose name differs.
struct PositionHolders {
    qint32 count = 0;
    const QString* name = nullptr; // the first holder's
    bool namesDiffer = false;
};

// Each column is asked whether another column (deleted ones included) holds its position under
// another name, as PositionInUse does, with the holders of every position counted in one pass.
std::optional<Failure> checkPositions(const CDataSourcesColumns& columns) {
    QHash<qint32, PositionHolders> holders;
    holders.reserve(columns.Count());
    for (const auto& column : columns) {
        PositionHolders& holder = holders[column->Position()];
        if (holder.count++ == 0)
            holder.name = &column->Column_Name();
        else if (*holder.name != column->Column_Name())
            holder.namesDiffer = true;
    }
    for (const auto& column : columns) {
        if (holders.value(column->Position()).namesDiffer) {
            return Failure{Texts::tr("Column %1 has a duplicate position spceified.")
                                   .arg(column->Column_Name()) +
                               MsgBoxLineBreak + uniquePositionHint(),
                           column->ColPosition(), ColumnGridRows::Position};
        }
    }
    return std::nullopt;
}

} // namespace

std::optional<Failure> FirstFailure(const CDataSourcesColumns& columns,
                                    const ColumnGridModel& grid) {
    if (columns.Count() < 1)
        return Failure{Texts::tr("At least one column must be defined"), 0, 0};
    if (auto failure = checkGrid(grid))
        return failure;
    if (auto failure = checkKeys(columns, grid))
        return failure;
    return checkPositions(columns);
}

} // namespace Orvane::ColumnValidation
