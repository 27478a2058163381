#include "studio/db/PreparedQueryCache.h"

namespace Orvane::Studio {

QSqlQuery* PreparedQueryCache::Find(const QString& text) {
    const auto found = m_byText.constFind(text);
    if (found == m_byText.constEnd())
        return nullptr;
    m_entries.splice(m_entries.begin(), m_entries, *found);
    return &m_entries.front().second;
}

QSqlQuery& PreparedQueryCache::Keep(const QString& text, QSqlQuery query) {
    Forget(text);
    m_entries.emplace_front(text, std::move(query));
    m_byText.insert(text, m_entries.begin());
    while (m_byText.size() > m_capacity) {
        m_byText.remove(m_entries.back().first);
        m_entries.pop_back();
    }
    return m_entries.front().second;
}

void PreparedQueryCache::Forget(const QString& text) {
    const auto found = m_byText.constFind(text);
    if (found == m_byText.constEnd())
        return;
    m_entries.erase(*found);
    m_byText.erase(found);
}

void PreparedQueryCache::Clear() {
    m_byText.clear();
    m_entries.clear();
}

} // namespace Orvane::Studio
