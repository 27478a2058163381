#include "studio/db/SqliteStatements.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/SqlConnection.h"
#include "studio/db/SqliteRows.h"
#include "studio/db/StatementRedaction.h"

#include <QSqlDriver>
#include <sqlite3.h>

namespace Orvane::Studio {

SqliteStatements::SqliteStatements(SqlConnection& connection, qsizetype capacity)
    : m_connection(connection)
    , m_capacity(capacity) {}

SqliteStatements::~SqliteStatements() {
    clear();
}

void SqliteStatements::clear() {
    for (const auto& [text, statement] : m_kept)
        sqlite3_finalize(statement);
    m_kept.clear();
    m_byText.clear();
}

QVariant SqliteStatements::Run(const QString& statement, const QVariantList& values,
                               const QString& shown) {
    m_connection.ReopenIfLost();
    sqlite3_stmt* prepared = this->prepared(statement, shown);
    bind(prepared, values, shown);
    QVariant first;
    const int step = sqlite3_step(prepared);
    if (step == SQLITE_ROW) {
        QVariantList row;
        SqliteRows::ReadRow(prepared, row);
        first = row.value(0);
    }
    if (step != SQLITE_ROW && step != SQLITE_DONE) {
        sqlite3_reset(prepared);
        fail(shown);
    }
    // Resetting ends the statement: a RETURNING statement finishes its changes here.
    if (sqlite3_reset(prepared) != SQLITE_OK)
        fail(shown);
    return first;
}

sqlite3_stmt* SqliteStatements::prepared(const QString& statement, const QString& shown) {
    if (m_session != m_connection.Session()) {
        clear();
        m_session = m_connection.Session();
        const QVariant handle = m_connection.Database().driver()->handle();
        m_database = qstrcmp(handle.typeName(), "sqlite3*") == 0
                         ? *static_cast<sqlite3* const*>(handle.constData())
                         : nullptr;
    }
    if (!m_database)
        throw Error(QStringLiteral("%1 is not an open SQLite database.")
                        .arg(m_connection.Description().Shown()));
    if (const auto kept = m_byText.constFind(statement); kept != m_byText.constEnd()) {
        m_kept.splice(m_kept.begin(), m_kept, *kept);
        return m_kept.front().second;
    }
    sqlite3_stmt* prepared = nullptr;
    if (sqlite3_prepare16_v3(m_database, statement.utf16(), int(statement.size() * sizeof(QChar)),
                             SQLITE_PREPARE_PERSISTENT, &prepared, nullptr) != SQLITE_OK) {
        sqlite3_finalize(prepared);
        fail(shown);
    }
    m_kept.emplace_front(statement, prepared);
    m_byText.insert(statement, m_kept.begin());
    while (m_byText.size() > m_capacity) {
        sqlite3_finalize(m_kept.back().second);
        m_byText.remove(m_kept.back().first);
        m_kept.pop_back();
    }
    return prepared;
}

// Texts are bound without a copy: they outlive the step, and every run binds every value anew.
void SqliteStatements::bind(sqlite3_stmt* statement, const QVariantList& values,
                            const QString& shown) {
    if (sqlite3_bind_parameter_count(statement) != values.size())
        throw Error(QStringLiteral("The statement takes %1 values, not %2.\nStatement: %3")
                        .arg(sqlite3_bind_parameter_count(statement))
                        .arg(values.size())
                        .arg(StatementRedaction(shown).Statement()));
    for (int i = 0; i < int(values.size()); ++i) {
        const QVariant& value = values[i];
        int bound = SQLITE_OK;
        switch (value.isNull() ? QMetaType::UnknownType : value.typeId()) {
        case QMetaType::UnknownType:
            bound = sqlite3_bind_null(statement, i + 1);
            break;
        case QMetaType::Int:
        case QMetaType::LongLong:
        case QMetaType::Bool:
            bound = sqlite3_bind_int64(statement, i + 1, value.toLongLong());
            break;
        case QMetaType::Double:
            bound = sqlite3_bind_double(statement, i + 1, value.toDouble());
            break;
        case QMetaType::QString: {
            const QString* text = static_cast<const QString*>(value.constData());
            bound = sqlite3_bind_text16(statement, i + 1, text->utf16(),
                                        int(text->size() * sizeof(QChar)), SQLITE_STATIC);
            break;
        }
        default: {
            const QString text = value.toString();
            bound = sqlite3_bind_text16(statement, i + 1, text.utf16(),
                                        int(text.size() * sizeof(QChar)), SQLITE_TRANSIENT);
        }
        }
        if (bound != SQLITE_OK)
            fail(shown);
    }
}

void SqliteStatements::fail(const QString& shown) const {
    const StatementRedaction redaction(shown);
    const QString reason = QString::fromUtf8(sqlite3_errmsg(m_database)).trimmed();
    throw Error(
        QStringLiteral("%1\nStatement: %2").arg(redaction.Hide(reason), redaction.Statement()));
}

} // namespace Orvane::Studio
