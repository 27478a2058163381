#include "studio/db/DatabaseBackend.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/OdbcBackend.h"
#include "studio/db/PostgresBackend.h"
#include "studio/db/SqlConnection.h"
#include "studio/db/SqliteBackend.h"

#include <algorithm>

namespace Orvane::Studio {

namespace {

bool isAsciiLetter(QChar c) {
    return (c >= u'a' && c <= u'z') || (c >= u'A' && c <= u'Z') || c == u'_';
}

// A letter or underscore, then letters, digits, _, $ and #; checked by hand, as sequences are
// drawn one id at a time.
bool isPlainPart(QStringView part) {
    if (part.isEmpty() || !isAsciiLetter(part.front()))
        return false;
    return std::all_of(part.begin() + 1, part.end(), [](QChar c) {
        return isAsciiLetter(c) || (c >= u'0' && c <= u'9') || c == u'$' || c == u'#';
    });
}

} // namespace

std::unique_ptr<DatabaseBackend> DatabaseBackend::For(SqlConnection& connection) {
    switch (connection.Backend()) {
    case SqlBackend::SQLite:
        return std::make_unique<SqliteBackend>(connection);
    case SqlBackend::PostgreSQL:
        return std::make_unique<PostgresBackend>(connection);
    case SqlBackend::ODBC:
        return std::make_unique<OdbcBackend>(connection);
    }
    return nullptr;
}

void DatabaseBackend::RequirePlainName(const QString& name, const QString& what) {
    const qsizetype dot = name.indexOf(QLatin1Char('.'));
    const QStringView whole(name);
    const bool plain = dot < 0 ? isPlainPart(whole)
                               : isPlainPart(whole.left(dot)) && isPlainPart(whole.mid(dot + 1));
    if (!plain)
        throw Error(QStringLiteral("\"%1\" is not a %2 name.").arg(name, what));
}

} // namespace Orvane::Studio
