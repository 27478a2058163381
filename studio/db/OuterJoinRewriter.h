#pragma once

#include <QList>
#include <QSet>
#include <QString>
#include <functional>
#include <optional>

namespace Orvane::Studio {

class SqlTokenList;

// Rewrites the FROM and WHERE clauses of one SELECT block whose WHERE clause holds (+) outer
// joins into ANSI joins (see OracleDialectBridge). Refusals are Orvane::Errors naming the reason.
class OuterJoinRewriter {
public:
    // The translated text of tokens [first, last); (+) marks dropped when asked, else refused.
    using PieceText = std::function<QString(qsizetype first, qsizetype last, bool dropMarks)>;

    OuterJoinRewriter(const SqlTokenList& tokens, PieceText piece);

    // The text that replaces tokens [fromKeyword, whereEnd): "FROM ... [WHERE ...]".
    QString Rewrite(qsizetype fromKeyword, qsizetype whereKeyword, qsizetype whereEnd);

private:
    struct FromItem {
        QString text;
        QString name; // the correlation name: the alias, else the table's own name
        QStringList conditions;
        QSet<QString> dependsOn;
        bool outer = false;
    };
    struct ColumnReferences {
        QSet<QString> marked;
        QSet<QString> plain;
        QStringList unqualified;
        bool hasSubquery = false;
        bool hasOr = false;
        bool hasMark = false;
    };
    using Ranges = QList<std::pair<qsizetype, qsizetype>>;

    void readFromList(qsizetype first, qsizetype last);
    FromItem readFromItem(qsizetype first, qsizetype last) const;
    Ranges splitConditions(qsizetype first, qsizetype last) const;
    void appendCondition(qsizetype first, qsizetype last, Ranges& conditions) const;
    std::optional<Ranges> andedParts(qsizetype first, qsizetype last) const;
    ColumnReferences referencesIn(qsizetype first, qsizetype last) const;
    bool holdsInnerAnd(qsizetype first, qsizetype last) const;
    void attachOuterCondition(qsizetype first, qsizetype last, const ColumnReferences& refs);
    qsizetype itemNamed(const QString& name) const;
    QString joinedFromList() const;
    QString nameKey(qsizetype token) const;
    qsizetype skipParentheses(qsizetype i) const;
    qsizetype skipNested(qsizetype i) const;

    const SqlTokenList& m_tokens;
    PieceText m_piece;
    QList<FromItem> m_items;
};

} // namespace Orvane::Studio
