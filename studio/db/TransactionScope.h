#pragma once

#include "studio/db/StatementDelivery.h"

namespace Orvane::Studio {

class SqlQueryService;

// One transaction for the life of the object: begun on construction, rolled back on destruction
// unless committed, so an error that leaves the scope undoes everything written in it.
//     TransactionScope transaction(service);
//     document.SaveData();
//     transaction.Commit();
class TransactionScope {
public:
    explicit TransactionScope(SqlQueryService& service,
                              StatementDelivery delivery = StatementDelivery::AtOnce);
    ~TransactionScope();
    TransactionScope(const TransactionScope&) = delete;
    TransactionScope& operator=(const TransactionScope&) = delete;

    void Commit();

private:
    SqlQueryService& m_service;
    bool m_open = true;
};

} // namespace Orvane::Studio
