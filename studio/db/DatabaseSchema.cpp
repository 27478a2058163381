#include "studio/db/DatabaseSchema.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/SqlConnection.h"

#include <QCoreApplication>
#include <QFile>
#include <QRegularExpression>
#include <QSqlRecord>

// Resources of a static library must be registered by name.
static void initDatabaseResources() {
    Q_INIT_RESOURCE(orvane_db);
}

namespace Orvane::Studio {

namespace {

// The texts of this file, in one translation context.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Orvane::Studio::DatabaseSchema)
};

QString script(const QString& name) {
    initDatabaseResources();
    QFile file(QStringLiteral(":/orvane/db/") + name);
    if (!file.open(QIODevice::ReadOnly))
        throw Error(Texts::tr("The schema script %1 is missing from the program.").arg(name));
    return QString::fromUtf8(file.readAll());
}

QString schemaScriptOf(SqlBackend backend) {
    switch (backend) {
    case SqlBackend::SQLite:
        return script(QStringLiteral("sqlite.sql"));
    case SqlBackend::PostgreSQL:
        return script(QStringLiteral("postgresql.sql"));
    case SqlBackend::ODBC:
        break;
    }
    throw Error(Texts::tr("Orvane Studio does not set up databases reached over ODBC."));
}

qsizetype endOfQuoted(const QString& text, qsizetype pos) {
    const QChar quote = text[pos];
    for (qsizetype at = pos + 1;;) {
        at = text.indexOf(quote, at);
        if (at < 0)
            return text.size();
        if (at + 1 < text.size() && text[at + 1] == quote) {
            at += 2;
            continue;
        }
        return at + 1;
    }
}

// A PostgreSQL body between $tag$ and $tag$; pos itself when no tag starts here.
qsizetype endOfDollarQuoted(const QString& text, qsizetype pos) {
    const qsizetype close = text.indexOf(QLatin1Char('$'), pos + 1);
    if (close < 0)
        return pos;
    for (const QChar c : QStringView(text).mid(pos + 1, close - pos - 1)) {
        if (!c.isLetterOrNumber() && c != QLatin1Char('_'))
            return pos;
    }
    const QString tag = text.mid(pos, close - pos + 1);
    const qsizetype end = text.indexOf(tag, close + 1);
    return end < 0 ? text.size() : end + tag.size();
}

// The end of a quoted text, comment or $tag$ body that starts at pos; pos when none starts there.
qsizetype skipQuoted(const QString& text, qsizetype pos) {
    const QStringView rest = QStringView(text).mid(pos);
    if (rest.startsWith(QLatin1Char('\'')) || rest.startsWith(QLatin1Char('"')))
        return endOfQuoted(text, pos);
    if (rest.startsWith(QLatin1String("--"))) {
        const qsizetype end = text.indexOf(QLatin1Char('\n'), pos);
        return end < 0 ? text.size() : end;
    }
    if (rest.startsWith(QLatin1String("/*"))) {
        const qsizetype end = text.indexOf(QLatin1String("*/"), pos + 2);
        return end < 0 ? text.size() : end + 2;
    }
    if (rest.startsWith(QLatin1Char('$')))
        return endOfDollarQuoted(text, pos);
    return pos;
}

bool onlyComments(const QString& statement) {
    for (qsizetype pos = 0; pos < statement.size();) {
        if (statement[pos].isSpace()) {
            ++pos;
            continue;
        }
        const bool comment = QStringView(statement).mid(pos).startsWith(QLatin1String("--")) ||
                             QStringView(statement).mid(pos).startsWith(QLatin1String("/*"));
        if (!comment)
            return false;
        pos = skipQuoted(statement, pos);
    }
    return true;
}

bool hasChangeStamp(SqlConnection& connection) {
    return connection.Database()
        .record(QStringLiteral("eds_document"))
        .contains(QStringLiteral("change_stamp"));
}

} // namespace

QStringList DatabaseSchema::Statements(const QString& script) {
    QStringList statements;
    qsizetype start = 0;
    qsizetype pos = 0;
    while (pos <= script.size()) {
        if (pos < script.size() && script[pos] != QLatin1Char(';')) {
            const qsizetype end = skipQuoted(script, pos);
            pos = end > pos ? end : pos + 1;
            continue;
        }
        const QString statement = script.mid(start, pos - start).trimmed();
        if (!onlyComments(statement))
            statements << statement;
        start = ++pos;
    }
    return statements;
}

QStringList DatabaseSchema::Tables(SqlBackend backend) {
    static const QRegularExpression createTable(QStringLiteral("^CREATE TABLE\\s+(\\w+)"),
                                                QRegularExpression::CaseInsensitiveOption |
                                                    QRegularExpression::MultilineOption);
    QStringList tables;
    for (const QString& statement : Statements(schemaScriptOf(backend))) {
        const auto match = createTable.match(statement);
        if (match.hasMatch())
            tables << match.captured(1).toLower();
    }
    return tables;
}

void DatabaseSchema::Install(SqlConnection& connection, SchemaForm form) {
    const QStringList schema = Statements(schemaScriptOf(connection.Backend()));
    const QStringList demo = Statements(script(QStringLiteral("demo-data.sql")));
    connection.Begin();
    try {
        for (const QString& statement : schema + demo)
            connection.Run(statement);
        if (form == SchemaForm::WithoutEditorPosition)
            connection.Run(QStringLiteral("ALTER TABLE eds_column DROP COLUMN editor_position"));
        connection.Commit();
    } catch (const Error& error) {
        connection.Rollback();
        throw Error(Texts::tr("Cannot set up %1: %2")
                        .arg(connection.Description().Shown(), error.message()));
    }
}

void DatabaseSchema::Upgrade(SqlConnection& connection) {
    if (hasChangeStamp(connection))
        return;
    try {
        connection.Run(QStringLiteral(
            "ALTER TABLE eds_document ADD COLUMN change_stamp INTEGER NOT NULL DEFAULT 0"));
    } catch (const Error& error) {
        // Another session may have added it first.
        if (!hasChangeStamp(connection))
            throw Error(Texts::tr("Cannot bring %1 up to date: %2")
                            .arg(connection.Description().Shown(), error.message()));
    }
}

} // namespace Orvane::Studio
