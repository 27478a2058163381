#include "studio/db/StatementRedaction.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/SqlTokenList.h"

#include <QCoreApplication>
#include <QList>
#include <QRegularExpression>
#include <utility>

namespace Orvane::Studio {

namespace {

using Range = std::pair<qsizetype, qsizetype>; // first and last token, both included

const QString Hidden = QStringLiteral("***");

bool isPasswordColumn(const SqlTokenList& tokens, qsizetype i) {
    static const QRegularExpression password(QStringLiteral("(^|_)(password|passwd|pwd)$"),
                                             QRegularExpression::CaseInsensitiveOption);
    return tokens.IsName(i) &&
           password.match(tokens.Text(i).toString().remove(QLatin1Char('"'))).hasMatch();
}

// The comma-separated items between the parenthesis at open and the one closing it.
QList<Range> itemsIn(const SqlTokenList& tokens, qsizetype open) {
    QList<Range> items;
    qsizetype first = open + 1;
    const qsizetype close = tokens.Closing(open);
    for (qsizetype i = first; i <= close; ++i) {
        if (i == close || tokens.IsSymbol(i, QLatin1StringView(","))) {
            items.append({first, i - 1});
            first = i + 1;
        } else if (tokens.IsSymbol(i, QLatin1StringView("("))) {
            i = tokens.Closing(i);
        }
    }
    return items;
}

// "(a, pwd) VALUES (1, 'x')": the values that go to password columns.
QList<Range> insertedSecrets(const SqlTokenList& tokens, qsizetype open) {
    const qsizetype close = tokens.Closing(open);
    if (close < 0 || !tokens.IsKeyword(close + 1, QLatin1StringView("VALUES")) ||
        !tokens.IsSymbol(close + 2, QLatin1StringView("(")) || tokens.Closing(close + 2) < 0)
        return {};
    const QList<Range> names = itemsIn(tokens, open);
    const QList<Range> values = itemsIn(tokens, close + 2);
    QList<Range> secrets;
    for (qsizetype k = 0; k < names.size() && k < values.size(); ++k) {
        if (names[k].first == names[k].second && isPasswordColumn(tokens, names[k].first))
            secrets.append(values[k]);
    }
    return secrets;
}

QList<Range> secretsIn(const SqlTokenList& tokens) {
    QList<Range> secrets;
    for (qsizetype i = 0; i < tokens.Count(); ++i) {
        if (isPasswordColumn(tokens, i) && tokens.IsSymbol(i + 1, QLatin1StringView("=")) &&
            i + 2 < tokens.Count())
            secrets.append({i + 2, i + 2});
        else if (tokens.IsSymbol(i, QLatin1StringView("(")))
            secrets += insertedSecrets(tokens, i);
    }
    return secrets;
}

// A quoted literal as the database may quote it back: without its quotes, doubled ones single.
QString unquoted(QStringView literal) {
    return literal.mid(1, literal.size() - 2)
        .toString()
        .replace(QStringLiteral("''"), QStringLiteral("'"));
}

} // namespace

StatementRedaction::StatementRedaction(const QString& statement) {
    try {
        const SqlTokenList tokens(statement);
        const QString& text = tokens.Statement();
        qsizetype copied = 0;
        for (const auto& [first, last] : secretsIn(tokens)) {
            const QStringView span = tokens.Span(first, last);
            const qsizetype begin = span.data() - text.data();
            if (begin < copied)
                continue;
            m_statement += text.mid(copied, begin - copied) + Hidden;
            copied = begin + span.size();
            m_secrets << span.toString();
            if (first == last && tokens.Kind(first) == SqlTokenKind::String)
                m_secrets << unquoted(span);
        }
        m_statement += text.mid(copied);
    } catch (const Error&) {
        m_statement = QCoreApplication::translate("StatementRedaction", "(not shown)");
    }
}

QString StatementRedaction::Hide(QString message) const {
    for (const QString& secret : m_secrets) {
        if (!secret.isEmpty())
            message.replace(secret, Hidden);
    }
    return message;
}

} // namespace Orvane::Studio
