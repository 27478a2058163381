#include "studio/db/OuterJoinRewriter.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/SqlTokenList.h"

#include <QStringList>

#include <algorithm>
#include <optional>

namespace Orvane::Studio {

namespace {

QSet<QString> wordSet(const char* words) {
    const QStringList list = QString::fromLatin1(words).split(QLatin1Char(' '));
    return QSet<QString>(list.begin(), list.end());
}

// Words that may stand in a FROM list only in explicit joins, which (+) cannot be mixed with.
const QSet<QString> JoinWords =
    wordSet("JOIN INNER LEFT RIGHT FULL CROSS OUTER NATURAL ON USING APPLY LATERAL");

// Bare words of a condition that are not column names.
const QSet<QString> ConditionWords =
    wordSet("AND OR NOT NULL IS IN LIKE ESCAPE BETWEEN CASE WHEN THEN ELSE END TRUE FALSE UNKNOWN "
            "EXISTS ANY ALL SOME PRIOR DISTINCT AS SYSDATE SYSTIMESTAMP CURRENT_DATE "
            "CURRENT_TIMESTAMP USER ROWNUM LEVEL DATE TIMESTAMP INTERVAL YEAR MONTH DAY HOUR "
            "MINUTE SECOND TO");

QString listed(const QStringList& names) {
    return names.join(QStringLiteral(", "));
}

} // namespace

OuterJoinRewriter::OuterJoinRewriter(const SqlTokenList& tokens, PieceText piece)
    : m_tokens(tokens)
    , m_piece(std::move(piece)) {}

QString OuterJoinRewriter::Rewrite(qsizetype fromKeyword, qsizetype whereKeyword,
                                   qsizetype whereEnd) {
    readFromList(fromKeyword + 1, whereKeyword);
    QStringList kept;
    for (const auto& [first, last] : splitConditions(whereKeyword + 1, whereEnd)) {
        const ColumnReferences refs = referencesIn(first, last);
        if (refs.hasMark)
            attachOuterCondition(first, last, refs);
        else
            kept << m_piece(first, last, false);
    }
    QString text = QStringLiteral("FROM ") + joinedFromList();
    if (!kept.isEmpty())
        text += QStringLiteral(" WHERE ") + kept.join(QStringLiteral(" AND "));
    return text;
}

qsizetype OuterJoinRewriter::skipParentheses(qsizetype i) const {
    if (!m_tokens.IsSymbol(i, QLatin1StringView("(")))
        return i;
    const qsizetype close = m_tokens.Closing(i);
    if (close < 0)
        throw Error(QStringLiteral("parentheses do not match"));
    return close;
}

// The END of a CASE that starts at i, else what skipParentheses gives.
qsizetype OuterJoinRewriter::skipNested(qsizetype i) const {
    if (!m_tokens.IsKeyword(i, QLatin1StringView("CASE")))
        return skipParentheses(i);
    for (qsizetype j = i + 1; j < m_tokens.Count(); j = skipNested(j) + 1) {
        if (m_tokens.IsKeyword(j, QLatin1StringView("END")))
            return j;
    }
    throw Error(QStringLiteral("a CASE has no END"));
}

// Oracle's rule: a bare name is compared in upper case, a quoted one exactly.
QString OuterJoinRewriter::nameKey(qsizetype token) const {
    const QStringView text = m_tokens.Text(token);
    if (m_tokens.Kind(token) == SqlTokenKind::QuotedName)
        return text.mid(1, text.size() - 2)
            .toString()
            .replace(QStringLiteral("\"\""), QStringLiteral("\""));
    return text.toString().toUpper();
}

void OuterJoinRewriter::readFromList(qsizetype first, qsizetype last) {
    qsizetype start = first;
    for (qsizetype i = first;; i = skipParentheses(i) + 1) {
        const bool atEnd = i >= last;
        if (!atEnd && !m_tokens.IsSymbol(i, QLatin1StringView(",")))
            continue;
        FromItem item = readFromItem(start, std::min(i, last));
        if (itemNamed(item.name) >= 0)
            throw Error(
                QStringLiteral("two tables of the FROM list are both called %1").arg(item.name));
        m_items.append(std::move(item));
        if (atEnd)
            return;
        start = i + 1;
    }
}

// A table (schema.table and an alias allowed) or a parenthesised subquery with its alias.
OuterJoinRewriter::FromItem OuterJoinRewriter::readFromItem(qsizetype first, qsizetype last) const {
    if (first >= last)
        throw Error(QStringLiteral("the FROM list has an empty entry"));
    for (qsizetype i = first; i < last; i = skipParentheses(i) + 1) {
        if (m_tokens.Kind(i) == SqlTokenKind::Word &&
            JoinWords.contains(m_tokens.Text(i).toString().toUpper()))
            throw Error(QStringLiteral("(+) cannot be mixed with %1 in one FROM list")
                            .arg(m_tokens.Text(i).toString().toUpper()));
    }
    const auto unreadable = [&] {
        return Error(QStringLiteral("the FROM entry \"%1\" is not a table with an optional alias")
                         .arg(m_tokens.Span(first, last - 1)));
    };
    FromItem item;
    qsizetype i = first;
    if (m_tokens.IsSymbol(i, QLatin1StringView("("))) {
        i = skipParentheses(i) + 1;
    } else if (m_tokens.IsName(i)) {
        while (m_tokens.IsSymbol(i + 1, QLatin1StringView(".")) && m_tokens.IsName(i + 2) &&
               i + 2 < last)
            i += 2;
        item.name = nameKey(i);
        ++i;
    } else {
        throw unreadable();
    }
    if (i < last && m_tokens.IsKeyword(i, QLatin1StringView("AS")))
        ++i;
    if (i < last) {
        if (!m_tokens.IsName(i) || i + 1 != last)
            throw unreadable();
        item.name = nameKey(i);
    }
    if (item.name.isEmpty())
        throw Error(QStringLiteral("a subquery in the FROM list needs an alias"));
    item.text = m_piece(first, last, false);
    return item;
}

// The AND-ed conditions of a WHERE clause, with parenthesised AND groups split into theirs:
// parentheses around AND-ed conditions change nothing in Oracle, and each condition of a group may
// belong to another join or stay in WHERE.
OuterJoinRewriter::Ranges OuterJoinRewriter::splitConditions(qsizetype first,
                                                             qsizetype last) const {
    const std::optional<Ranges> parts = andedParts(first, last);
    if (!parts)
        throw Error(QStringLiteral("(+) cannot be used in a WHERE clause joined by OR"));
    Ranges conditions;
    for (const auto& [begin, end] : *parts)
        appendCondition(begin, end, conditions);
    return conditions;
}

// A group that holds OR, or one that is a subquery, stays one condition.
void OuterJoinRewriter::appendCondition(qsizetype first, qsizetype last, Ranges& conditions) const {
    const bool group = m_tokens.IsSymbol(first, QLatin1StringView("(")) &&
                       m_tokens.Closing(first) == last - 1 &&
                       !m_tokens.IsKeyword(first + 1, QLatin1StringView("SELECT")) &&
                       !m_tokens.IsKeyword(first + 1, QLatin1StringView("WITH"));
    if (group) {
        if (const std::optional<Ranges> parts = andedParts(first + 1, last - 1)) {
            for (const auto& [begin, end] : *parts)
                appendCondition(begin, end, conditions);
            return;
        }
    }
    conditions.append({first, last});
}

// The parts of [first, last) that AND joins at its own level, the AND of a BETWEEN and those
// inside a CASE excepted; nothing when an OR joins them.
std::optional<OuterJoinRewriter::Ranges> OuterJoinRewriter::andedParts(qsizetype first,
                                                                       qsizetype last) const {
    Ranges parts;
    qsizetype start = first;
    int openBetweens = 0;
    for (qsizetype i = first;; i = skipNested(i) + 1) {
        const bool atEnd = i >= last;
        if (!atEnd) {
            if (m_tokens.IsKeyword(i, QLatin1StringView("OR")))
                return std::nullopt;
            if (m_tokens.IsKeyword(i, QLatin1StringView("BETWEEN")))
                ++openBetweens;
            if (!m_tokens.IsKeyword(i, QLatin1StringView("AND")))
                continue;
            if (openBetweens > 0) {
                --openBetweens;
                continue;
            }
        }
        const qsizetype end = std::min(i, last);
        if (start >= end)
            throw Error(QStringLiteral("the WHERE clause has an empty condition"));
        parts.append({start, end});
        if (atEnd)
            return parts;
        start = i + 1;
    }
}

// Every column named in a condition, by the table it is qualified with, and whether (+) marks
// it. Function names (a name followed by a parenthesis) are not columns.
OuterJoinRewriter::ColumnReferences OuterJoinRewriter::referencesIn(qsizetype first,
                                                                    qsizetype last) const {
    ColumnReferences refs;
    qsizetype i = first;
    while (i < last) {
        if (m_tokens.IsSymbol(i, QLatin1StringView("(")) &&
            (m_tokens.IsKeyword(i + 1, QLatin1StringView("SELECT")) ||
             m_tokens.IsKeyword(i + 1, QLatin1StringView("WITH")))) {
            refs.hasSubquery = true;
            i = skipParentheses(i) + 1;
            continue;
        }
        if (m_tokens.Kind(i) == SqlTokenKind::OuterJoinMark)
            throw Error(QStringLiteral("(+) must follow a column"));
        if (m_tokens.IsKeyword(i, QLatin1StringView("OR")))
            refs.hasOr = true;
        if (!m_tokens.IsName(i)) {
            ++i;
            continue;
        }
        qsizetype end = i;
        while (end + 2 < last && m_tokens.IsSymbol(end + 1, QLatin1StringView(".")) &&
               m_tokens.IsName(end + 2))
            end += 2;
        const bool function = end + 1 < last && m_tokens.IsSymbol(end + 1, QLatin1StringView("("));
        const bool marked = end + 1 < last && m_tokens.Kind(end + 1) == SqlTokenKind::OuterJoinMark;
        // A name before "(" is a function's, one after AS a type's: CAST(x AS INTEGER).
        const bool column = !function && !m_tokens.IsKeyword(i - 1, QLatin1StringView("AS"));
        if (column && end > i) {
            (marked ? refs.marked : refs.plain).insert(nameKey(end - 2));
        } else if (column && (marked || m_tokens.Kind(i) == SqlTokenKind::QuotedName ||
                              !ConditionWords.contains(m_tokens.Text(i).toString().toUpper()))) {
            refs.unqualified << m_tokens.Text(i).toString();
        }
        refs.hasMark = refs.hasMark || marked;
        i = end + (marked ? 2 : 1);
    }
    return refs;
}

void OuterJoinRewriter::attachOuterCondition(qsizetype first, qsizetype last,
                                             const ColumnReferences& refs) {
    if (refs.hasSubquery)
        throw Error(QStringLiteral("a condition with (+) may not contain a subquery"));
    if (refs.hasOr)
        throw Error(QStringLiteral("a condition with (+) may not use OR"));
    if (holdsInnerAnd(first, last))
        throw Error(QStringLiteral("a condition with (+) may not hold AND-ed conditions under NOT "
                                   "or inside an expression"));
    if (!refs.unqualified.isEmpty())
        throw Error(QStringLiteral("in a condition with (+) every column must be qualified with "
                                   "its table, and %1 is not")
                        .arg(refs.unqualified.first()));
    if (refs.marked.size() != 1)
        throw Error(QStringLiteral("one condition marks columns of several tables with (+): %1")
                        .arg(listed(refs.marked.values())));
    const QString outer = *refs.marked.begin();
    if (refs.plain.contains(outer))
        throw Error(QStringLiteral("%1 stands on both sides of a condition with (+)").arg(outer));
    for (const QString& name : refs.plain + refs.marked) {
        if (itemNamed(name) < 0)
            throw Error(QStringLiteral("%1 is not a table of the FROM list").arg(name));
    }
    FromItem& item = m_items[itemNamed(outer)];
    item.outer = true;
    item.conditions << m_piece(first, last, true);
    item.dependsOn += refs.plain;
}

// An AND that is not a BETWEEN's. Once the WHERE clause is split, it stands under NOT or inside an
// expression, where what it means beside (+) is not certain.
bool OuterJoinRewriter::holdsInnerAnd(qsizetype first, qsizetype last) const {
    int openBetweens = 0;
    for (qsizetype i = first; i < last; ++i) {
        if (m_tokens.IsKeyword(i, QLatin1StringView("BETWEEN")))
            ++openBetweens;
        else if (m_tokens.IsKeyword(i, QLatin1StringView("AND")) && openBetweens-- == 0)
            return true;
    }
    return false;
}

qsizetype OuterJoinRewriter::itemNamed(const QString& name) const {
    for (qsizetype i = 0; i < m_items.size(); ++i) {
        if (m_items[i].name == name)
            return i;
    }
    return -1;
}

// The plain tables first, then each outer table once every table its conditions name is placed.
QString OuterJoinRewriter::joinedFromList() const {
    QString text;
    QSet<QString> placed;
    QList<const FromItem*> waiting;
    for (const FromItem& item : m_items) {
        if (item.outer) {
            if (item.dependsOn.isEmpty())
                throw Error(QStringLiteral("%1 is outer-joined without a condition that links it "
                                           "to another table")
                                .arg(item.name));
            waiting.append(&item);
            continue;
        }
        text += (placed.isEmpty() ? QString() : QStringLiteral(" CROSS JOIN ")) + item.text;
        placed.insert(item.name);
    }
    if (placed.isEmpty())
        throw Error(QStringLiteral("every table is outer-joined, so none is there to join to"));
    while (!waiting.isEmpty()) {
        const auto ready = std::find_if(waiting.begin(), waiting.end(), [&](const FromItem* item) {
            return placed.contains(item->dependsOn);
        });
        if (ready == waiting.end()) {
            QStringList names;
            for (const FromItem* item : waiting)
                names << item->name;
            throw Error(
                QStringLiteral("the outer joins of %1 depend on each other").arg(listed(names)));
        }
        const FromItem& item = **ready;
        text += QStringLiteral(" LEFT JOIN ") + item.text + QStringLiteral(" ON ") +
                item.conditions.join(QStringLiteral(" AND "));
        placed.insert(item.name);
        waiting.erase(ready);
    }
    return text;
}

} // namespace Orvane::Studio
