#pragma once

#include "orvane/host/IRecordset.h"

#include <QHash>
#include <QList>
#include <QStringList>
#include <QVariantList>

class QSqlQuery;

namespace Orvane::Studio {

// The rows of a SELECT, read at once so that the database's cursor and locks are released before
// the caller walks them. Forward reading, with MoveFirst to read again; field names compare
// without regard to case; a database null is a null QVariant.
class SqlRecordset : public IRecordset {
public:
    explicit SqlRecordset(QSqlQuery& query);

    bool Eof() const override;
    void MoveFirst() override;
    void MoveNext() override;
    QVariant Value(const QString& field) const override;

    QStringList FieldNames() const { return m_names; }
    qsizetype RowCount() const { return m_rows.size(); }

private:
    QStringList m_names;
    QHash<QString, qsizetype> m_columnOf; // case-folded name -> column
    QList<QVariantList> m_rows;
    qsizetype m_current = 0;
};

} // namespace Orvane::Studio
