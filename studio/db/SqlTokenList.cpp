#include "studio/db/SqlTokenList.h"

#include "orvane/host/OrvaneError.h"

#include <array>

namespace Orvane::Studio {

namespace {

bool startsWord(QChar c) {
    return c.isLetter() || c == QLatin1Char('_');
}

bool continuesWord(QChar c) {
    return c.isLetterOrNumber() || c == QLatin1Char('_') || c == QLatin1Char('$') ||
           c == QLatin1Char('#');
}

bool isDigit(QChar c) {
    return c >= QLatin1Char('0') && c <= QLatin1Char('9');
}

constexpr std::array<QLatin1StringView, 9> TwoCharacterSymbols{
    QLatin1StringView("<>"), QLatin1StringView("<="), QLatin1StringView(">="),
    QLatin1StringView("!="), QLatin1StringView("^="), QLatin1StringView("||"),
    QLatin1StringView("::"), QLatin1StringView(":="), QLatin1StringView("=>")};

} // namespace

SqlTokenList::SqlTokenList(QString statement)
    : m_statement(std::move(statement)) {
    lex();
    matchParentheses();
}

QStringView SqlTokenList::Text(qsizetype i) const {
    const Token& token = m_tokens[i];
    return QStringView(m_statement).mid(token.begin, token.end - token.begin);
}

QStringView SqlTokenList::GapBefore(qsizetype i) const {
    const qsizetype from = i == 0 ? 0 : m_tokens[i - 1].end;
    return QStringView(m_statement).mid(from, m_tokens[i].begin - from);
}

QStringView SqlTokenList::TrailingGap() const {
    const qsizetype from = m_tokens.isEmpty() ? 0 : m_tokens.last().end;
    return QStringView(m_statement).mid(from);
}

QStringView SqlTokenList::Span(qsizetype first, qsizetype last) const {
    const qsizetype from = m_tokens[first].begin;
    return QStringView(m_statement).mid(from, m_tokens[last].end - from);
}

bool SqlTokenList::IsKeyword(qsizetype i, QLatin1StringView keyword) const {
    if (i < 0 || i >= Count() || m_tokens[i].kind != SqlTokenKind::Word ||
        m_tokens[i].end - m_tokens[i].begin != keyword.size())
        return false;
    return Text(i).compare(keyword, Qt::CaseInsensitive) == 0;
}

// Compared character by character: the statement is walked token by token many times over.
bool SqlTokenList::IsSymbol(qsizetype i, QLatin1StringView symbol) const {
    if (i < 0 || i >= Count())
        return false;
    const Token& token = m_tokens[i];
    if (token.kind != SqlTokenKind::Symbol || token.end - token.begin != symbol.size())
        return false;
    const QChar* text = m_statement.constData() + token.begin;
    for (qsizetype k = 0; k < symbol.size(); ++k) {
        if (text[k] != symbol[k])
            return false;
    }
    return true;
}

bool SqlTokenList::IsName(qsizetype i) const {
    return i >= 0 && i < Count() &&
           (m_tokens[i].kind == SqlTokenKind::Word || m_tokens[i].kind == SqlTokenKind::QuotedName);
}

void SqlTokenList::lex() {
    // Roughly one token in four characters; growing the list costs more than a spare slot.
    m_tokens.reserve(m_statement.size() / 3 + 8);
    qsizetype pos = skipGap(0);
    while (pos < m_statement.size()) {
        const QChar c = m_statement[pos];
        const QChar next = pos + 1 < m_statement.size() ? m_statement[pos + 1] : QChar();
        Token token{SqlTokenKind::Symbol, pos, 0};
        if (c == QLatin1Char('\'')) {
            token = {SqlTokenKind::String, pos, endOfQuoted(pos, c)};
        } else if (c == QLatin1Char('"')) {
            token = {SqlTokenKind::QuotedName, pos, endOfQuoted(pos, c)};
        } else if (isDigit(c) || (c == QLatin1Char('.') && isDigit(next))) {
            token = {SqlTokenKind::Number, pos, endOfNumber(pos)};
        } else if (startsWord(c)) {
            token = {SqlTokenKind::Word, pos, endOfWord(pos)};
        } else if (const qsizetype mark = endOfOuterJoinMark(pos); mark > pos) {
            token = {SqlTokenKind::OuterJoinMark, pos, mark};
        } else {
            token.end = endOfSymbol(pos);
        }
        m_tokens.append(token);
        pos = skipGap(token.end);
    }
}

// Skips blanks and comments; an unterminated block comment is an error.
qsizetype SqlTokenList::skipGap(qsizetype pos) const {
    const qsizetype size = m_statement.size();
    while (pos < size) {
        const QChar c = m_statement[pos];
        const QChar next = pos + 1 < size ? m_statement[pos + 1] : QChar();
        if (c.isSpace()) {
            ++pos;
        } else if (c == QLatin1Char('-') && next == QLatin1Char('-')) {
            const qsizetype end = m_statement.indexOf(QLatin1Char('\n'), pos);
            pos = end < 0 ? size : end;
        } else if (c == QLatin1Char('/') && next == QLatin1Char('*')) {
            const qsizetype end = m_statement.indexOf(QLatin1String("*/"), pos + 2);
            if (end < 0)
                throw Error(QStringLiteral("a comment is never closed"));
            pos = end + 2;
        } else {
            break;
        }
    }
    return pos;
}

// A quote of the same kind written twice stands for itself.
qsizetype SqlTokenList::endOfQuoted(qsizetype pos, QChar quote) const {
    qsizetype at = pos + 1;
    for (;;) {
        at = m_statement.indexOf(quote, at);
        if (at < 0) {
            throw Error(quote == QLatin1Char('\'')
                            ? QStringLiteral("a text literal is never closed")
                            : QStringLiteral("a quoted name is never closed"));
        }
        if (at + 1 < m_statement.size() && m_statement[at + 1] == quote) {
            at += 2;
            continue;
        }
        return at + 1;
    }
}

qsizetype SqlTokenList::endOfNumber(qsizetype pos) const {
    const qsizetype size = m_statement.size();
    while (pos < size && isDigit(m_statement[pos]))
        ++pos;
    if (pos < size && m_statement[pos] == QLatin1Char('.')) {
        ++pos;
        while (pos < size && isDigit(m_statement[pos]))
            ++pos;
    }
    if (pos < size &&
        (m_statement[pos] == QLatin1Char('e') || m_statement[pos] == QLatin1Char('E'))) {
        qsizetype exponent = pos + 1;
        if (exponent < size && (m_statement[exponent] == QLatin1Char('+') ||
                                m_statement[exponent] == QLatin1Char('-')))
            ++exponent;
        if (exponent < size && isDigit(m_statement[exponent])) {
            pos = exponent;
            while (pos < size && isDigit(m_statement[pos]))
                ++pos;
        }
    }
    return pos;
}

qsizetype SqlTokenList::endOfWord(qsizetype pos) const {
    ++pos;
    while (pos < m_statement.size() && continuesWord(m_statement[pos]))
        ++pos;
    return pos;
}

// "(+)" with any blanks between its three characters; pos itself when there is none here.
qsizetype SqlTokenList::endOfOuterJoinMark(qsizetype pos) const {
    if (m_statement[pos] != QLatin1Char('('))
        return pos;
    const auto nextNonBlank = [this](qsizetype at) {
        while (at < m_statement.size() && m_statement[at].isSpace())
            ++at;
        return at;
    };
    const qsizetype plus = nextNonBlank(pos + 1);
    if (plus >= m_statement.size() || m_statement[plus] != QLatin1Char('+'))
        return pos;
    const qsizetype close = nextNonBlank(plus + 1);
    if (close >= m_statement.size() || m_statement[close] != QLatin1Char(')'))
        return pos;
    return close + 1;
}

qsizetype SqlTokenList::endOfSymbol(qsizetype pos) const {
    if (pos + 1 >= m_statement.size())
        return pos + 1;
    const char16_t first = m_statement[pos].unicode();
    const char16_t second = m_statement[pos + 1].unicode();
    for (const QLatin1StringView symbol : TwoCharacterSymbols) {
        if (first == symbol[0].unicode() && second == symbol[1].unicode())
            return pos + 2;
    }
    return pos + 1;
}

void SqlTokenList::matchParentheses() {
    m_closing.fill(-1, m_tokens.size());
    QList<qsizetype> open;
    for (qsizetype i = 0; i < m_tokens.size(); ++i) {
        if (IsSymbol(i, QLatin1StringView("("))) {
            open.append(i);
        } else if (IsSymbol(i, QLatin1StringView(")"))) {
            if (open.isEmpty()) {
                m_balanced = false;
                continue;
            }
            m_closing[open.takeLast()] = i;
        }
    }
    if (!open.isEmpty())
        m_balanced = false;
}

} // namespace Orvane::Studio
