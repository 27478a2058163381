#pragma once

#include "studio/db/SqlTokenList.h"

#include <QString>

namespace Orvane::Studio {

// Translates statements written in the Oracle dialect for SQLite and PostgreSQL. Pure text in,
// text out; no database is touched.
//
// - Outer joins written with (+) in the WHERE clause become ANSI joins: the comma-separated FROM
//   list is rebuilt as the first plain table, the other plain tables as CROSS JOINs, and each
//   outer table as a LEFT JOIN ... ON whose condition is every AND-ed WHERE condition that marks
//   that table with (+); a parenthesised AND group counts as the conditions it holds. The other
//   conditions stay in WHERE, so they filter after the joins as in Oracle. Outer tables joined to
//   outer tables (chains) are placed after the tables they depend on; subqueries and set operators
//   are translated block by block.
// - SELECT UNIQUE becomes SELECT DISTINCT.
// - Anything else passes unchanged, blanks and comments included.
//
// A statement whose outer joins cannot be rewritten with certainty (a (+) next to OR, on an
// unqualified column, outside a WHERE clause, beside explicit JOINs, in a cycle, ...) is an
// Orvane::Error that names the reason and the statement; it is never sent half translated.
class OracleDialectBridge {
public:
    static QString Translate(const QString& statement);
    // The translation cut into tokens: a statement that needs none is cut once.
    static SqlTokenList TranslatedTokens(const QString& statement);
};

} // namespace Orvane::Studio
