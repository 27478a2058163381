#include "studio/db/OracleDialectBridge.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/OuterJoinRewriter.h"
#include "studio/db/SqlTokenList.h"

namespace Orvane::Studio {

namespace {

constexpr int MaxNesting = 64;

using Word = QLatin1StringView;

// Walks one statement: statements after semicolons, queries joined by set operators, SELECT
// blocks and the subqueries inside them, each block's outer joins handed to OuterJoinRewriter.
class Translator {
public:
    explicit Translator(const SqlTokenList& tokens)
        : m_tokens(tokens) {}

    QString Statements() {
        if (m_tokens.Count() == 0)
            return m_tokens.Statement();
        QString text = m_tokens.GapBefore(0).toString();
        qsizetype start = 0;
        for (qsizetype i = 0;; i = skipParentheses(i) + 1) {
            const bool atEnd = i >= m_tokens.Count();
            if (!atEnd && !m_tokens.IsSymbol(i, Word(";")))
                continue;
            if (start < i)
                text += (start > 0 ? m_tokens.GapBefore(start).toString() : QString()) +
                        statement(start, i);
            if (atEnd)
                return text + m_tokens.TrailingGap().toString();
            text += m_tokens.GapBefore(i).toString() + QLatin1Char(';');
            start = i + 1;
        }
    }

private:
    QString statement(qsizetype first, qsizetype last) {
        if (startsQuery(first) || m_tokens.IsSymbol(first, Word("(")))
            return query(first, last);
        // INSERT ... SELECT, CREATE VIEW ... AS SELECT: the query part is translated as a query.
        const qsizetype select = findAtTop(first, last, Word("SELECT"));
        if (select < 0)
            return piece(first, last, false);
        return piece(first, select, false) + m_tokens.GapBefore(select).toString() +
               query(select, last);
    }

    QString query(qsizetype first, qsizetype last) {
        if (++m_depth > MaxNesting)
            throw Error(QStringLiteral("queries are nested more than %1 deep").arg(MaxNesting));
        QString text = m_tokens.IsKeyword(first, Word("WITH")) ? withQuery(first, last)
                                                               : setOfBlocks(first, last);
        --m_depth;
        return text;
    }

    QString withQuery(qsizetype first, qsizetype last) {
        const qsizetype main = findAtTop(first + 1, last, Word("SELECT"));
        if (main < 0)
            return piece(first, last, false);
        return piece(first, main, false) + m_tokens.GapBefore(main).toString() +
               setOfBlocks(main, last);
    }

    // SELECT blocks joined by UNION [ALL], INTERSECT, MINUS or EXCEPT.
    QString setOfBlocks(qsizetype first, qsizetype last) {
        QString text;
        qsizetype start = first;
        for (qsizetype i = first;; i = skipParentheses(i) + 1) {
            const bool atEnd = i >= last;
            if (!atEnd && !isSetOperator(i))
                continue;
            if (start >= std::min(i, last))
                throw Error(QStringLiteral("a set operator lacks the query on one of its sides"));
            text += block(start, std::min(i, last));
            if (atEnd)
                return text;
            qsizetype next = i + 1;
            if (m_tokens.IsKeyword(next, Word("ALL")) || m_tokens.IsKeyword(next, Word("DISTINCT")))
                ++next;
            text += m_tokens.GapBefore(i).toString() + piece(i, next, false);
            if (next < last)
                text += m_tokens.GapBefore(next).toString();
            start = next;
            i = next - 1;
        }
    }

    // One SELECT block. Only a block whose own WHERE clause holds (+) is rebuilt; any other keeps
    // its text, with its subqueries translated.
    QString block(qsizetype first, qsizetype last) {
        if (!m_tokens.IsKeyword(first, Word("SELECT")))
            return piece(first, last, false);
        qsizetype from = -1;
        qsizetype where = -1;
        qsizetype tail = last;
        for (qsizetype i = first + 1; i < last; i = skipParentheses(i) + 1) {
            if (from < 0) {
                if (m_tokens.IsKeyword(i, Word("FROM")))
                    from = i;
            } else if (where < 0 && m_tokens.IsKeyword(i, Word("WHERE"))) {
                where = i;
            } else if (startsTail(i)) {
                tail = i;
                break;
            }
        }
        if (!hasOwnMark(first, last))
            return piece(first, last, false);
        requireMarksIn(first, last, where, tail);

        OuterJoinRewriter rewriter(m_tokens, [this](qsizetype a, qsizetype b, bool dropMarks) {
            return piece(a, b, dropMarks);
        });
        QString text = piece(first, from, false) + m_tokens.GapBefore(from).toString() +
                       rewriter.Rewrite(from, where, tail);
        if (tail < last)
            text += QLatin1Char(' ') + piece(tail, last, false);
        return text;
    }

    // The text of tokens [first, last) as written, with nested queries translated, SELECT UNIQUE
    // written as SELECT DISTINCT, and (+) marks dropped when asked (refused otherwise).
    QString piece(qsizetype first, qsizetype last, bool dropMarks) {
        QString text;
        bool markDropped = false;
        for (qsizetype i = first; i < last;) {
            if (m_tokens.Kind(i) == SqlTokenKind::OuterJoinMark) {
                if (!dropMarks)
                    throw Error(QStringLiteral("(+) stands where no outer join can be formed"));
                markDropped = true;
                ++i;
                continue;
            }
            if (i > first) {
                // "b.x(+)IS NULL" must not become "b.xIS NULL".
                const QStringView gap = m_tokens.GapBefore(i);
                const bool glues = m_tokens.Kind(i) == SqlTokenKind::Word ||
                                   m_tokens.Kind(i) == SqlTokenKind::Number;
                text += gap.isEmpty() && markDropped && glues ? QStringView(u" ") : gap;
            }
            markDropped = false;
            if (isSubquery(i)) {
                const qsizetype close = m_tokens.Closing(i);
                if (close < 0 || close >= last)
                    throw Error(QStringLiteral("parentheses do not match"));
                text += QLatin1Char('(') + m_tokens.GapBefore(i + 1).toString() +
                        query(i + 1, close) + m_tokens.GapBefore(close).toString() +
                        QLatin1Char(')');
                i = close + 1;
                continue;
            }
            const bool unique =
                m_tokens.IsKeyword(i, Word("UNIQUE")) && m_tokens.IsKeyword(i - 1, Word("SELECT"));
            text += unique ? QStringLiteral("DISTINCT") : m_tokens.Text(i).toString();
            ++i;
        }
        return text;
    }

    // (+) anywhere in the block outside its subqueries.
    bool hasOwnMark(qsizetype first, qsizetype last) const {
        for (qsizetype i = first; i < last; ++i) {
            if (isSubquery(i))
                i = m_tokens.Closing(i);
            else if (m_tokens.Kind(i) == SqlTokenKind::OuterJoinMark)
                return true;
        }
        return false;
    }

    void requireMarksIn(qsizetype first, qsizetype last, qsizetype where, qsizetype tail) const {
        for (qsizetype i = first; i < last; ++i) {
            if (isSubquery(i)) {
                i = m_tokens.Closing(i);
                continue;
            }
            const bool inWhere = where >= 0 && i > where && i < tail;
            if (m_tokens.Kind(i) == SqlTokenKind::OuterJoinMark && !inWhere)
                throw Error(
                    QStringLiteral("(+) is understood only in the WHERE clause of a query"));
        }
    }

    bool startsQuery(qsizetype i) const {
        return m_tokens.IsKeyword(i, Word("SELECT")) || m_tokens.IsKeyword(i, Word("WITH"));
    }

    bool isSubquery(qsizetype i) const {
        return m_tokens.IsSymbol(i, Word("(")) && startsQuery(i + 1) && m_tokens.Closing(i) > i;
    }

    bool isSetOperator(qsizetype i) const {
        return m_tokens.IsKeyword(i, Word("UNION")) || m_tokens.IsKeyword(i, Word("INTERSECT")) ||
               m_tokens.IsKeyword(i, Word("MINUS")) || m_tokens.IsKeyword(i, Word("EXCEPT"));
    }

    // The clauses that may follow WHERE in a block.
    bool startsTail(qsizetype i) const {
        const auto pair = [&](Word a, Word b) {
            return m_tokens.IsKeyword(i, a) && m_tokens.IsKeyword(i + 1, b);
        };
        return pair(Word("GROUP"), Word("BY")) || pair(Word("ORDER"), Word("BY")) ||
               pair(Word("CONNECT"), Word("BY")) || pair(Word("START"), Word("WITH")) ||
               pair(Word("FOR"), Word("UPDATE")) || pair(Word("FETCH"), Word("FIRST")) ||
               pair(Word("FETCH"), Word("NEXT")) || m_tokens.IsKeyword(i, Word("HAVING")) ||
               m_tokens.IsKeyword(i, Word("LIMIT")) || m_tokens.IsKeyword(i, Word("OFFSET")) ||
               m_tokens.IsKeyword(i, Word("WINDOW"));
    }

    qsizetype findAtTop(qsizetype first, qsizetype last, Word keyword) const {
        for (qsizetype i = first; i < last; i = skipParentheses(i) + 1) {
            if (m_tokens.IsKeyword(i, keyword))
                return i;
        }
        return -1;
    }

    qsizetype skipParentheses(qsizetype i) const {
        if (!m_tokens.IsSymbol(i, Word("(")))
            return i;
        const qsizetype close = m_tokens.Closing(i);
        if (close < 0)
            throw Error(QStringLiteral("parentheses do not match"));
        return close;
    }

    const SqlTokenList& m_tokens;
    int m_depth = 0;
};

bool needsTranslation(const SqlTokenList& tokens) {
    for (qsizetype i = 0; i < tokens.Count(); ++i) {
        if (tokens.Kind(i) == SqlTokenKind::OuterJoinMark)
            return true;
        if (tokens.IsKeyword(i, Word("UNIQUE")) && tokens.IsKeyword(i - 1, Word("SELECT")))
            return true;
    }
    return false;
}

} // namespace

QString OracleDialectBridge::Translate(const QString& statement) {
    return TranslatedTokens(statement).Statement();
}

SqlTokenList OracleDialectBridge::TranslatedTokens(const QString& statement) {
    try {
        SqlTokenList tokens(statement);
        if (!needsTranslation(tokens))
            return tokens;
        if (!tokens.Balanced())
            throw Error(QStringLiteral("parentheses do not match"));
        return SqlTokenList(Translator(tokens).Statements());
    } catch (const Error& error) {
        throw Error(QStringLiteral("Cannot translate this statement from the Oracle dialect: %1.\n"
                                   "Statement: %2")
                        .arg(error.message(), statement));
    }
}

} // namespace Orvane::Studio
