#pragma once

#include "orvane/host/HostRegistry.h"

#include <memory>
#include <optional>

namespace Orvane {

class IQueryService;

// A value read once from the database and kept while the host keeps the same query service;
// when the host installs another connection, the next read loads it anew.
template <typename T> class ConnectionCache {
public:
    template <typename Load> const T& Get(Load load) {
        const std::shared_ptr<IQueryService> current = HostRegistry::QueryInstance();
        if (!m_value || m_source.lock() != current) {
            m_value = load();
            m_source = current;
        }
        return *m_value;
    }

private:
    std::weak_ptr<IQueryService> m_source;
    std::optional<T> m_value;
};

} // namespace Orvane
