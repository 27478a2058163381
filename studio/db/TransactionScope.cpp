#include "studio/db/TransactionScope.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/SqlQueryService.h"

namespace Orvane::Studio {

TransactionScope::TransactionScope(SqlQueryService& service, StatementDelivery delivery)
    : m_service(service) {
    m_service.BeginTransaction(delivery);
}

TransactionScope::~TransactionScope() {
    if (!m_open)
        return;
    try {
        m_service.RollbackTransaction();
    } catch (const Error&) {
        // A failed rollback leaves nothing committed either; a destructor must not throw.
    }
}

void TransactionScope::Commit() {
    m_open = false;
    m_service.CommitTransaction();
}

} // namespace Orvane::Studio
