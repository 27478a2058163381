#pragma once

#include <QHash>
#include <QSqlQuery>
#include <QString>
#include <list>
#include <utility>

namespace Orvane::Studio {

// The queries one connection has prepared, by statement text, the least recently used dropped
// beyond a bound. The queries belong to the connection: clear them before it closes.
class PreparedQueryCache {
public:
    explicit PreparedQueryCache(qsizetype capacity)
        : m_capacity(capacity) {}

    // The query kept for the text, now the most recently used; null when there is none.
    QSqlQuery* Find(const QString& text);
    // Keeps a prepared query, dropping the least recently used beyond the bound.
    QSqlQuery& Keep(const QString& text, QSqlQuery query);
    void Forget(const QString& text);
    void Clear();
    qsizetype Size() const { return m_byText.size(); }

private:
    using Entry = std::pair<QString, QSqlQuery>;

    qsizetype m_capacity;
    std::list<Entry> m_entries; // most recently used first
    QHash<QString, std::list<Entry>::iterator> m_byText;
};

} // namespace Orvane::Studio
