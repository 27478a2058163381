#include "tests/support/FakeRecordset.h"

#include "orvane/host/OrvaneError.h"

namespace Orvane::Testing {

QVariant FakeRecordset::Value(const QString& field) const {
    if (Eof())
        throw Error(QStringLiteral("No current row to read \"%1\" from.").arg(field));
    const Row& row = m_rows.at(m_current);
    for (auto it = row.cbegin(); it != row.cend(); ++it) {
        if (it.key().compare(field, Qt::CaseInsensitive) == 0)
            return it.value();
    }
    throw Error(QStringLiteral("Item cannot be found: %1").arg(field));
}

} // namespace Orvane::Testing
