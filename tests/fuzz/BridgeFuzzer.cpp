// Fuzzes the Oracle-dialect bridge, the statement shapes and the literal formatting. Every input
// must be translated or refused with Orvane::Error; a translation must hold no (+) and translate
// to itself again; a statement's shape with its values must render back to the statement; a
// literal must read back as the value it was made from. Anything else aborts.

#include "orvane/host/OrvaneError.h"
#include "studio/db/OracleDialectBridge.h"
#include "studio/db/SqlLiterals.h"
#include "studio/db/SqlTokenList.h"
#include "studio/db/StatementShape.h"

#include <QDate>
#include <QDateTime>
#include <QTime>
#include <cmath>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>

using namespace Orvane;
using namespace Orvane::Studio;

namespace {

[[noreturn]] void fail(const char* what, const QString& input, const QString& output) {
    std::fprintf(stderr, "%s\ninput:  %s\noutput: %s\n", what, qPrintable(input),
                 qPrintable(output));
    std::abort();
}

void checkShape(const QString& statement) {
    for (const auto binding :
         {StatementShape::Binding::SQLite, StatementShape::Binding::PostgreSQL}) {
        try {
            const StatementShape shape{SqlTokenList(statement), binding};
            if (shape.Render() != statement)
                fail("a shape does not render back to its statement", statement, shape.Render());
            if (shape.HasValues() && shape.Text().count(QLatin1Char('?')) != shape.Values().size())
                fail("a shape has not one placeholder per value", statement, shape.Text());
        } catch (const Error&) {
        }
    }
}

void checkStatement(const QString& statement) {
    checkShape(statement);
    QString translated;
    try {
        translated = OracleDialectBridge::Translate(statement);
    } catch (const Error&) {
        return;
    }
    const SqlTokenList tokens(translated);
    for (qsizetype i = 0; i < tokens.Count(); ++i) {
        if (tokens.Kind(i) == SqlTokenKind::OuterJoinMark)
            fail("a (+) survived the translation", statement, translated);
    }
    if (OracleDialectBridge::Translate(translated) != translated)
        fail("the translation does not translate to itself", statement, translated);
}

void checkTextLiteral(const QString& text) {
    QString literal;
    try {
        literal = SqlLiterals::Format(text);
    } catch (const Error&) {
        if (!text.contains(QChar(u'\0')))
            fail("text without NUL was refused", text, QString());
        return;
    }
    const SqlTokenList tokens(literal);
    if (tokens.Count() != 1 || tokens.Kind(0) != SqlTokenKind::String)
        fail("a text literal is not one string token", text, literal);
    QString back = literal.mid(1, literal.size() - 2);
    back.replace(QStringLiteral("''"), QStringLiteral("'"));
    if (back != text)
        fail("a text literal does not read back", text, literal);
    try {
        SqlLiterals::AsLong(text);
    } catch (const Error&) {
    }
    SqlLiterals::AsBoolean(text);
}

void checkNumbers(const uint8_t* data, size_t size) {
    if (size < 8)
        return;
    qint64 integer = 0;
    double number = 0;
    std::memcpy(&integer, data, 8);
    std::memcpy(&number, data, 8);
    if (SqlLiterals::Format(integer) != QString::number(integer))
        fail("an integer literal differs", QString::number(integer), SqlLiterals::Format(integer));
    try {
        const QString literal = SqlLiterals::Format(number);
        if (literal.toDouble() != number && !(number == 0 && literal.toDouble() == 0))
            fail("a number literal does not read back", QString::number(number), literal);
    } catch (const Error&) {
        if (std::isfinite(number))
            fail("a finite number was refused", QString::number(number), QString());
    }
    for (const QVariant& value :
         {QVariant(QDate::fromJulianDay(integer % 10000000)),
          QVariant(QDateTime::fromMSecsSinceEpoch(integer % 400000000000000LL, Qt::UTC)),
          QVariant(QTime::fromMSecsSinceStartOfDay(static_cast<int>(integer % 86400000)))}) {
        SqlLiterals::Format(value);
    }
    for (const QVariant& value : {QVariant(integer), QVariant(number)}) {
        try {
            SqlLiterals::AsLong(value);
        } catch (const Error&) {
        }
    }
}

void checkLists(const QString& text) {
    const QString column = text.left(12);
    try {
        SqlLiterals::SetList({{column, text}, {QStringLiteral("b"), QVariant()}});
    } catch (const Error&) {
    }
    try {
        SqlLiterals::ValueList({text, 1, QVariant()});
    } catch (const Error&) {
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size) {
    if (size == 0)
        return 0;
    const QString text = QString::fromUtf8(reinterpret_cast<const char*>(data + 1),
                                           static_cast<qsizetype>(size - 1));
    switch (data[0] % 4) {
    case 0:
        checkStatement(text);
        break;
    case 1:
        checkTextLiteral(text);
        break;
    case 2:
        checkNumbers(data + 1, size - 1);
        break;
    default:
        checkLists(text);
        break;
    }
    return 0;
}
