#pragma once

namespace Orvane::Studio {

// How a transaction's statements without a result reach the database. Batched lets PostgreSQL
// hold them back and send many per round trip before the next read or the commit, so that a
// failing one is reported there; any other database runs them at once either way.
enum class StatementDelivery { AtOnce, Batched };

} // namespace Orvane::Studio
