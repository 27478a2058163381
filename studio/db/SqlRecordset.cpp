#include "studio/db/SqlRecordset.h"

#include "orvane/host/OrvaneError.h"

#include <QSqlQuery>
#include <QSqlRecord>

namespace Orvane::Studio {

SqlRecordset::SqlRecordset(QSqlQuery& query) {
    const QSqlRecord record = query.record();
    for (int column = 0; column < record.count(); ++column)
        m_names << record.fieldName(column);
    // Backwards, so that of two fields with one name the first answers.
    for (int column = record.count() - 1; column >= 0; --column)
        m_columnOf.insert(record.fieldName(column).toCaseFolded(), column);
    while (query.next()) {
        QVariantList row;
        row.reserve(record.count());
        for (int column = 0; column < record.count(); ++column) {
            const QVariant value = query.value(column);
            row << (value.isNull() ? QVariant() : value);
        }
        m_rows << row;
    }
}

bool SqlRecordset::Eof() const {
    return m_current >= m_rows.size();
}

void SqlRecordset::MoveFirst() {
    m_current = 0;
}

void SqlRecordset::MoveNext() {
    if (m_current < m_rows.size())
        ++m_current;
}

QVariant SqlRecordset::Value(const QString& field) const {
    const auto column = m_columnOf.constFind(field.toCaseFolded());
    if (column == m_columnOf.constEnd())
        throw Error(QStringLiteral("The recordset has no field \"%1\"; its fields are %2.")
                        .arg(field, m_names.join(QStringLiteral(", "))));
    if (Eof())
        throw Error(
            QStringLiteral("The recordset has no current row to read \"%1\" from.").arg(field));
    return m_rows[m_current][*column];
}

} // namespace Orvane::Studio
