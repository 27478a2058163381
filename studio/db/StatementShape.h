#pragma once

#include "studio/db/SqlTokenList.h"

#include <QHash>
#include <QList>
#include <QString>
#include <QVariantList>
#include <utility>

namespace Orvane::Studio {

// A statement with its literals taken out as values to bind, so that statements that differ only
// in their values share one prepared query. Only literals whose type the context fixes are taken:
// the right side of a comparison or assignment, an item of a VALUES or IN list. Text literals
// become text values; whole numbers written as plain decimals become 64-bit integers; any other
// literal (0.5, 007, 1E3, a literal after DATE, ORDER BY 1) stays in the text.
//
// Only single SELECT, INSERT, UPDATE and DELETE statements are shaped; a statement that holds
// placeholder syntax of its own (?, :name, $1), a semicolon, or more than 64 such literals keeps
// all its literals.
//
// A list of whole numbers after a column's name, `column IN (1,2,3)`, is taken whole as one value:
// lists of any length then share one shape, which the database compiles once. PostgreSQL reads
// the list as `column = ANY('{1,2,3}')` and takes it as such an array; SQLite takes it as a JSON
// array, '[1,2,3]', read by json_each, but only as a statement's one list: with several, SQLite
// checks every row found against each list once more (a 10,000-field lookup in ten lists read
// 12 % slower).
class StatementShape {
public:
    // How values are bound. PostgreSQL types a bare parameter from its context, while a literal 1
    // is an integer: there a number's placeholder is cast to the literal's type.
    enum class Binding { SQLite, PostgreSQL };

    StatementShape(const SqlTokenList& tokens, Binding binding);

    bool HasValues() const { return !m_values.isEmpty(); }
    // A list is bound as its text.
    const QVariantList& Values() const { return m_values; }
    // The statement with a ? for every value taken out.
    QString Text() const;
    // The statement with every value written back as a literal: the statement shaped.
    QString Render() const;

private:
    void shape(const SqlTokenList& tokens);
    bool shapeable(const SqlTokenList& tokens) const;
    static qsizetype literalEnd(const SqlTokenList& tokens, qsizetype i);
    bool fixesType(const SqlTokenList& tokens, qsizetype first, qsizetype last,
                   qsizetype enclosing) const;
    qsizetype valueEnd(const SqlTokenList& tokens, qsizetype i, qsizetype enclosing);
    bool take(const SqlTokenList& tokens, qsizetype first, qsizetype last);
    qsizetype takeList(const SqlTokenList& tokens, qsizetype in);
    using Piece = std::pair<qsizetype, qsizetype>; // where a piece of the text begins and ends
    void keepText();
    QStringView piece(const Piece& piece) const;

    Binding m_binding;
    bool m_takeLists = true;
    QString m_statement;
    QList<Piece> m_pieces; // the text around the values: one more piece than values
    QVariantList m_values;
    QHash<qsizetype, QString> m_lists; // the values that are lists: the text that binds each
};

} // namespace Orvane::Studio
