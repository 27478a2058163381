#include "studio/db/SqlRecordset.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/SqliteRows.h"

#include <QSqlQuery>
#include <QSqlRecord>

namespace Orvane::Studio {

SqlRecordset::SqlRecordset(QSqlQuery& query) {
    const QSqlRecord record = query.record();
    const int columns = record.count();
    for (int column = 0; column < columns; ++column)
        m_names << record.fieldName(column);
    // Backwards, so that of two fields with one name the first answers.
    for (int column = columns - 1; column >= 0; --column)
        m_columnOf.insert(m_names[column].toCaseFolded(), column);
    if (sqlite3_stmt* statement = SqliteRows::StatementOf(query)) {
        m_rowCount = SqliteRows::ReadAll(statement, m_values);
        return;
    }
    if (query.size() > 0)
        m_values.reserve(qsizetype(query.size()) * columns);
    while (query.next()) {
        for (int column = 0; column < columns; ++column) {
            QVariant value = query.value(column);
            // The driver's null carries the column's type; callers test for a plain null.
            m_values.append(value.isNull() ? QVariant() : std::move(value));
        }
        ++m_rowCount;
    }
}

bool SqlRecordset::Eof() const {
    return m_current >= m_rowCount;
}

void SqlRecordset::MoveFirst() {
    m_current = 0;
}

void SqlRecordset::MoveNext() {
    if (m_current < m_rowCount)
        ++m_current;
}

QVariant SqlRecordset::Value(const QString& field) const {
    const qsizetype column = columnOf(field);
    if (Eof())
        throw Error(
            QStringLiteral("The recordset has no current row to read \"%1\" from.").arg(field));
    return m_values[m_current * m_names.size() + column];
}

qsizetype SqlRecordset::columnOf(const QString& field) const {
    // A literal's text is static and never freed: its address stands for its text.
    const bool literal = !field.data_ptr().isMutable() && !field.isEmpty();
    if (literal) {
        for (const auto& [text, column] : m_literal) {
            if (text == field.constData())
                return column;
        }
    }
    const auto asked = m_asked.constFind(field);
    if (asked != m_asked.constEnd()) {
        if (literal)
            rememberLiteral(field, *asked);
        return *asked;
    }
    const auto column = m_columnOf.constFind(field.toCaseFolded());
    if (column == m_columnOf.constEnd())
        throw Error(QStringLiteral("The recordset has no field \"%1\"; its fields are %2.")
                        .arg(field, m_names.join(QStringLiteral(", "))));
    m_asked.insert(field, *column);
    if (literal)
        rememberLiteral(field, *column);
    return *column;
}

// A caller reads a handful of literal names; beyond that many, names are found by their text.
void SqlRecordset::rememberLiteral(const QString& field, qsizetype column) const {
    if (m_literal.size() < MaxLiterals)
        m_literal.append({field.constData(), column});
}

} // namespace Orvane::Studio
