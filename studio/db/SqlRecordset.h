#pragma once

#include "orvane/host/IRecordset.h"

#include <QHash>
#include <QStringList>
#include <QVariantList>
#include <utility>

class QSqlQuery;

namespace Orvane::Studio {

// The rows of a SELECT, read at once so that the database's cursor and locks are released before
// the caller walks them; on SQLite straight from the statement (see SqliteRows). Forward reading,
// with MoveFirst to read again; field names compare without regard to case; a database null is a
// null QVariant.
//
// Callers read the same few names on every row, so each name as a caller spells it is resolved
// to its column once. A name written as a literal keeps its characters at one address for the
// whole run, so later reads of it find the column by that address without hashing the text;
// other names cost one hash lookup of their text and no case folding.
class SqlRecordset : public IRecordset {
public:
    explicit SqlRecordset(QSqlQuery& query);

    bool Eof() const override;
    void MoveFirst() override;
    void MoveNext() override;
    QVariant Value(const QString& field) const override;

    QStringList FieldNames() const { return m_names; }
    qsizetype RowCount() const { return m_rowCount; }

private:
    qsizetype columnOf(const QString& field) const;
    void rememberLiteral(const QString& field, qsizetype column) const;

    QStringList m_names;
    QHash<QString, qsizetype> m_columnOf;      // case-folded name -> column
    mutable QHash<QString, qsizetype> m_asked; // a name as a caller spelled it -> column
    static constexpr qsizetype MaxLiterals = 32;
    // A literal name's characters and its column, looked through in order: fewer than a hash.
    mutable QList<std::pair<const QChar*, qsizetype>> m_literal;
    QVariantList m_values; // every row's values, one row after the other
    qsizetype m_rowCount = 0;
    qsizetype m_current = 0;
};

} // namespace Orvane::Studio
