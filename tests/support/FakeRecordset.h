#pragma once

#include "orvane/host/IRecordset.h"

#include <QList>
#include <QVariantMap>

namespace Orvane::Testing {

using Row = QVariantMap;

// A recordset over rows given in the test; field names compare without regard to case.
class FakeRecordset : public IRecordset {
public:
    explicit FakeRecordset(QList<Row> rows)
        : m_rows(std::move(rows)) {}

    bool Eof() const override { return m_current >= m_rows.size(); }
    void MoveFirst() override { m_current = 0; }
    void MoveNext() override { ++m_current; }
    QVariant Value(const QString& field) const override;

private:
    QList<Row> m_rows;
    qsizetype m_current = 0;
};

} // namespace Orvane::Testing
