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
// PostgreSQL reads `column IN (1,2,3)` as `column = ANY('{1,2,3}')`, so there a list of whole
// numbers after a column's name is taken whole, as one array value: lists of any length then
// share one shape, and the server plans the statement once.
class StatementShape {
public:
    // How values are bound: bare placeholders, or PostgreSQL's, where a number's placeholder is
    // cast to the type the database gives the literal (PostgreSQL types a bare parameter from its
    // context, a literal 1 is an integer) and a list of whole numbers is one array.
    enum class Binding { Bare, PostgreSQL };

    explicit StatementShape(const SqlTokenList& tokens, Binding binding = Binding::Bare);

    bool HasValues() const { return !m_values.isEmpty(); }
    // An array is bound as its text, '{1,2,3}'.
    const QVariantList& Values() const { return m_values; }
    // The statement with a ? for every value taken out.
    QString Text() const;
    // The statement with every value written back as a literal: the statement shaped.
    QString Render() const;

private:
    bool shapeable(const SqlTokenList& tokens) const;
    static qsizetype literalEnd(const SqlTokenList& tokens, qsizetype i);
    bool fixesType(const SqlTokenList& tokens, qsizetype first, qsizetype last,
                   qsizetype enclosing) const;
    qsizetype valueEnd(const SqlTokenList& tokens, qsizetype i, qsizetype enclosing);
    bool take(const SqlTokenList& tokens, qsizetype first, qsizetype last);
    qsizetype takeArray(const SqlTokenList& tokens, qsizetype in);
    using Piece = std::pair<qsizetype, qsizetype>; // where a piece of the text begins and ends
    void keepText();
    QStringView piece(const Piece& piece) const;

    Binding m_binding;
    QString m_statement;
    QList<Piece> m_pieces; // the text around the values: one more piece than values
    QVariantList m_values;
    QHash<qsizetype, QLatin1StringView> m_arrayTypes; // the values that are arrays: their type
};

} // namespace Orvane::Studio
