#pragma once

#include <QList>
#include <QString>
#include <QStringView>

namespace Orvane::Studio {

enum class SqlTokenKind {
    Word,          // a bare name or keyword
    QuotedName,    // "a name in double quotes"
    String,        // 'a literal', quotes doubled inside
    Number,        // 12, 1.5, 2E10
    OuterJoinMark, // (+), blanks allowed inside
    Symbol         // anything else, one or two characters: ( ) , . = <> <= || ...
};

// A statement cut into tokens. Blanks and comments are not tokens: they stay in the gaps between
// them, so a piece of the statement can be copied out as it was written. Text inside quotes is
// one token, so nothing in a literal is ever taken for syntax. An unterminated quote or comment
// is an Orvane::Error.
class SqlTokenList {
public:
    explicit SqlTokenList(QString statement);

    const QString& Statement() const { return m_statement; }
    qsizetype Count() const { return m_tokens.size(); }

    SqlTokenKind Kind(qsizetype i) const { return m_tokens[i].kind; }
    QStringView Text(qsizetype i) const;
    // Where token i starts in the statement, and where it ends (one past its last character).
    qsizetype Begin(qsizetype i) const { return m_tokens[i].begin; }
    qsizetype End(qsizetype i) const { return m_tokens[i].end; }
    // The blanks and comments between token i - 1 and token i.
    QStringView GapBefore(qsizetype i) const;
    // The blanks and comments after the last token.
    QStringView TrailingGap() const;
    // The statement's own text from token first to token last, both included.
    QStringView Span(qsizetype first, qsizetype last) const;

    // A bare word equal to the keyword regardless of case.
    bool IsKeyword(qsizetype i, QLatin1StringView keyword) const;
    bool IsSymbol(qsizetype i, QLatin1StringView symbol) const;
    bool IsName(qsizetype i) const;
    // The index of the parenthesis that closes the one at i; -1 when it is never closed.
    qsizetype Closing(qsizetype open) const { return m_closing[open]; }
    // Every parenthesis is closed, and none is closed before it was opened.
    bool Balanced() const { return m_balanced; }

private:
    struct Token {
        SqlTokenKind kind;
        qsizetype begin;
        qsizetype end;
    };

    void lex();
    qsizetype skipGap(qsizetype pos) const;
    qsizetype endOfQuoted(qsizetype pos, QChar quote) const;
    qsizetype endOfNumber(qsizetype pos) const;
    qsizetype endOfWord(qsizetype pos) const;
    qsizetype endOfOuterJoinMark(qsizetype pos) const;
    qsizetype endOfSymbol(qsizetype pos) const;
    void matchParentheses();

    QString m_statement;
    QList<Token> m_tokens;
    QList<qsizetype> m_closing;
    bool m_balanced = true;
};

} // namespace Orvane::Studio
