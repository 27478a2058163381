#pragma once

#include "studio/db/SqlTokenList.h"

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
class StatementShape {
public:
    // How number placeholders are written: bare, or cast to the type the database gives the
    // literal (PostgreSQL types a bare parameter from its context, a literal 1 is an integer).
    enum class Numbers { Bare, Cast };

    explicit StatementShape(const SqlTokenList& tokens);

    bool HasValues() const { return !m_values.isEmpty(); }
    const QVariantList& Values() const { return m_values; }
    // The statement with a ? for every value taken out.
    QString Text(Numbers numbers) const;
    // The statement with every value written back as a literal: the statement shaped.
    QString Render() const;

private:
    bool shapeable(const SqlTokenList& tokens) const;
    static qsizetype literalEnd(const SqlTokenList& tokens, qsizetype i);
    bool fixesType(const SqlTokenList& tokens, qsizetype first, qsizetype last,
                   qsizetype enclosing) const;
    bool take(const SqlTokenList& tokens, qsizetype first, qsizetype last);
    using Piece = std::pair<qsizetype, qsizetype>; // where a piece of the text begins and ends
    void keepText();
    QStringView piece(const Piece& piece) const;

    QString m_statement;
    QList<Piece> m_pieces; // the text around the values: one more piece than values
    QVariantList m_values;
};

} // namespace Orvane::Studio
