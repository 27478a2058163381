#include "studio/db/SqliteRows.h"

#include "orvane/host/OrvaneError.h"

#include <QSqlQuery>
#include <QSqlResult>
#include <sqlite3.h>

namespace Orvane::Studio {

namespace {

QVariant valueOf(sqlite3_stmt* statement, int column) {
    switch (sqlite3_column_type(statement, column)) {
    case SQLITE_NULL:
        return {};
    case SQLITE_INTEGER:
        return qlonglong(sqlite3_column_int64(statement, column));
    case SQLITE_FLOAT:
        return sqlite3_column_double(statement, column);
    case SQLITE_BLOB:
        return QByteArray(static_cast<const char*>(sqlite3_column_blob(statement, column)),
                          sqlite3_column_bytes(statement, column));
    default: {
        const auto* text = reinterpret_cast<const char*>(sqlite3_column_text(statement, column));
        return QString::fromUtf8(text, sqlite3_column_bytes(statement, column));
    }
    }
}

} // namespace

sqlite3_stmt* SqliteRows::StatementOf(const QSqlQuery& query) {
    const QSqlResult* result = query.result();
    if (!result || !query.isActive())
        return nullptr;
    const QVariant handle = result->handle();
    if (qstrcmp(handle.typeName(), "sqlite3_stmt*") != 0)
        return nullptr;
    return *static_cast<sqlite3_stmt* const*>(handle.constData());
}

void SqliteRows::ReadRow(sqlite3_stmt* statement, QVariantList& values) {
    const int columns = sqlite3_column_count(statement);
    for (int column = 0; column < columns; ++column)
        values.append(valueOf(statement, column));
}

qsizetype SqliteRows::ReadAll(sqlite3_stmt* statement, QVariantList& values) {
    // Qt's driver steps to the first row as it executes; a result without rows it has reset.
    if (!sqlite3_stmt_busy(statement))
        return 0;
    qsizetype rows = 0;
    int step = SQLITE_ROW;
    for (; step == SQLITE_ROW; step = sqlite3_step(statement)) {
        ReadRow(statement, values);
        ++rows;
    }
    if (step != SQLITE_DONE) {
        const QString reason = QString::fromUtf8(sqlite3_errmsg(sqlite3_db_handle(statement)));
        sqlite3_reset(statement);
        throw Error(QStringLiteral("Cannot read the rows of the query: %1").arg(reason));
    }
    sqlite3_reset(statement);
    return rows;
}

} // namespace Orvane::Studio
