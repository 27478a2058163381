#pragma once

#include <QString>
#include <optional>

namespace Orvane {

class CDataSourcesColumns;
class ColumnGridModel;

// The checks a column layout must pass before the document is saved. Each check takes one pass
// over the grid or the collection, so large layouts validate in linear time.
namespace ColumnValidation {

// What failed first, and the cell to take the user to; column 0 and row 0 name no cell.
struct Failure {
    QString message;
    qint32 column = 0;
    qint32 row = 0;
};

// Runs the checks in their fixed order over the grid as the user sees it and the collection,
// and returns the first failure, or nothing.
std::optional<Failure> FirstFailure(const CDataSourcesColumns& columns,
                                    const ColumnGridModel& grid);

} // namespace ColumnValidation

} // namespace Orvane
