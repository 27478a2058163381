#include "studio/db/ConnectionDescription.h"

#include "orvane/host/OrvaneError.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>
#include <QUrl>
#include <QUrlQuery>

namespace Orvane::Studio {

namespace {

// The texts of this file, in one translation context.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Orvane::Studio::ConnectionDescription)
};

// The password in the authority of a PostgreSQL URL: captured(2), percent-encoded, or as typed
// with a slash that makes the URL unreadable.
const QRegularExpression& urlPassword() {
    static const QRegularExpression password(
        QStringLiteral("^(postgres(?:ql)?://[^/@:]*):([^@]*)@"),
        QRegularExpression::CaseInsensitiveOption);
    return password;
}

// PWD=value in an ODBC connection string, the value in braces when it holds a semicolon.
const QRegularExpression& odbcPassword() {
    static const QRegularExpression password(
        QStringLiteral("(?<=^|[:;])(\\s*PWD\\s*=\\s*)(\\{(?:[^}]|\\}\\})*\\}|[^;]*)"),
        QRegularExpression::CaseInsensitiveOption);
    return password;
}

bool isOdbc(const QString& text) {
    return text.trimmed().startsWith(QLatin1String("odbc:"), Qt::CaseInsensitive);
}

QString odbcValue(const QString& written) {
    if (!written.startsWith(QLatin1Char('{')))
        return written.trimmed();
    return written.mid(1, written.size() - 2).replace(QStringLiteral("}}"), QStringLiteral("}"));
}

QString odbcWritten(QString value) {
    static const QRegularExpression plain(QStringLiteral("^[^;{}\\s]+$"));
    if (plain.match(value).hasMatch())
        return value;
    return QLatin1Char('{') + value.replace(QStringLiteral("}"), QStringLiteral("}}")) +
           QLatin1Char('}');
}

// The password's separator goes with it: the one after it, or before it when it ends the text.
QString withoutOdbcPassword(const QString& text, const QRegularExpressionMatch& match) {
    qsizetype begin = match.capturedStart(0);
    qsizetype end = match.capturedEnd(0);
    if (end < text.size() && text.at(end) == QLatin1Char(';'))
        ++end;
    else if (text.at(begin - 1) == QLatin1Char(';'))
        --begin;
    return text.left(begin) + text.mid(end);
}

ConnectionDescription sqlite(const QString& path) {
    if (path.trimmed().isEmpty())
        throw Error(Texts::tr("The connection \"sqlite:\" names no database file."));
    ConnectionDescription description;
    description.backend = SqlBackend::SQLite;
    description.databaseName = path;
    return description;
}

ConnectionDescription odbc(const QString& text) {
    if (text.trimmed().isEmpty())
        throw Error(Texts::tr("The connection \"odbc:\" names no data source."));
    ConnectionDescription description;
    description.backend = SqlBackend::ODBC;
    description.databaseName = text;
    return description;
}

ConnectionDescription postgresql(const QString& text) {
    const QUrl url(text, QUrl::StrictMode);
    // Qt's reason quotes the whole text, password and all: only its first part is shown.
    if (!url.isValid())
        throw Error(Texts::tr("The PostgreSQL connection cannot be read: %1.")
                        .arg(url.errorString().section(QLatin1Char(';'), 0, 0)));
    ConnectionDescription description;
    description.backend = SqlBackend::PostgreSQL;
    description.host = url.host();
    description.port = url.port(-1);
    description.user = url.userName(QUrl::FullyDecoded);
    description.password = url.password(QUrl::FullyDecoded);
    description.databaseName = url.path(QUrl::FullyDecoded).mid(1);
    if (description.databaseName.isEmpty())
        throw Error(Texts::tr("The PostgreSQL connection names no database: write it as "
                              "postgresql://user@host:port/dbname."));
    QStringList options;
    bool timeoutGiven = false;
    for (const auto& [key, value] : QUrlQuery(url).queryItems(QUrl::FullyDecoded)) {
        options << key + QLatin1Char('=') + value;
        timeoutGiven = timeoutGiven || key == QLatin1String("connect_timeout");
    }
    if (!timeoutGiven)
        options << QStringLiteral("connect_timeout=10");
    description.options = options.join(QLatin1Char(';'));
    return description;
}

} // namespace

ConnectionDescription ConnectionDescription::Parse(const QString& text) {
    const QString trimmed = text.trimmed();
    if (trimmed.isEmpty())
        throw Error(Texts::tr("No database was named."));
    const auto startsWith = [&](const char* prefix) {
        return trimmed.startsWith(QLatin1String(prefix), Qt::CaseInsensitive);
    };
    if (startsWith("postgresql://") || startsWith("postgres://"))
        return postgresql(trimmed);
    if (startsWith("odbc:"))
        return odbc(trimmed.mid(5));
    if (startsWith("sqlite:"))
        return sqlite(trimmed.mid(7));
    // Any other scheme is a mistake; a Windows drive letter is a path.
    static const QRegularExpression scheme(QStringLiteral("^([A-Za-z][A-Za-z0-9+.-]+)://"));
    if (const auto match = scheme.match(trimmed); match.hasMatch())
        throw Error(Texts::tr("\"%1\" is not a kind of database Orvane Studio opens: use "
                              "sqlite:, postgresql:// or odbc:.")
                        .arg(match.captured(1)));
    return sqlite(trimmed);
}

QString ConnectionDescription::PasswordOf(const QString& connection) {
    const QString text = connection.trimmed();
    if (const auto match = urlPassword().match(text); match.hasMatch())
        return QUrl::fromPercentEncoding(match.captured(2).toUtf8());
    if (const auto match = odbcPassword().match(text); isOdbc(text) && match.hasMatch())
        return odbcValue(match.captured(2));
    return QString();
}

QString ConnectionDescription::WithoutPassword(const QString& connection) {
    const QString text = connection.trimmed();
    if (const auto match = urlPassword().match(text); match.hasMatch())
        return text.left(match.capturedEnd(1)) + text.mid(match.capturedEnd(2));
    if (const auto match = odbcPassword().match(text); isOdbc(text) && match.hasMatch())
        return withoutOdbcPassword(text, match);
    return text;
}

QString ConnectionDescription::WithPassword(const QString& text, const QString& password) {
    const QString bare = WithoutPassword(text);
    if (password.isEmpty())
        return text;
    if (isOdbc(bare))
        return bare + QStringLiteral(";PWD=") + odbcWritten(password);
    static const QRegularExpression authority(QStringLiteral("^postgres(?:ql)?://([^/@]*@)?"),
                                              QRegularExpression::CaseInsensitiveOption);
    const auto match = authority.match(bare);
    if (!match.hasMatch())
        return text;
    const QString encoded = QString::fromUtf8(QUrl::toPercentEncoding(password));
    if (match.hasCaptured(1))
        return bare.left(match.capturedEnd(1) - 1) + QLatin1Char(':') + encoded +
               bare.mid(match.capturedEnd(1) - 1);
    return bare.left(match.capturedEnd(0)) + QLatin1Char(':') + encoded + QLatin1Char('@') +
           bare.mid(match.capturedEnd(0));
}

QString ConnectionDescription::DriverName() const {
    switch (backend) {
    case SqlBackend::SQLite:
        return QStringLiteral("QSQLITE");
    case SqlBackend::PostgreSQL:
        return QStringLiteral("QPSQL");
    case SqlBackend::ODBC:
        return QStringLiteral("QODBC");
    }
    return QString();
}

QString ConnectionDescription::Shown() const {
    switch (backend) {
    case SqlBackend::SQLite:
        return Texts::tr("the SQLite database \"%1\"").arg(databaseName);
    case SqlBackend::PostgreSQL: {
        QString where = host.isEmpty() ? Texts::tr("the local server") : host;
        if (port > 0)
            where += QLatin1Char(':') + QString::number(port);
        QString shown = Texts::tr("the PostgreSQL database \"%1\" on %2").arg(databaseName, where);
        if (!user.isEmpty())
            shown += Texts::tr(" as user \"%1\"").arg(user);
        return shown;
    }
    case SqlBackend::ODBC:
        return Texts::tr("the ODBC data source \"%1\"")
            .arg(QString(databaseName).replace(odbcPassword(), QStringLiteral("\\1***")));
    }
    return QString();
}

} // namespace Orvane::Studio
