#include "studio/db/OdbcBackend.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/SqlConnection.h"
#include "studio/db/SqlLiterals.h"

#include <QSqlError>
#include <QSqlField>
#include <QSqlRecord>
#include <QStringList>

namespace Orvane::Studio {

qint32 OdbcBackend::NextSequenceValue(const QString& sequence) {
    RequirePlainName(sequence, QStringLiteral("sequence"));
    QSqlQuery query = m_connection.Run(QStringLiteral("SELECT %1.NEXTVAL FROM DUAL").arg(sequence));
    if (!query.next())
        throw Error(QStringLiteral("The sequence %1 gave no value.").arg(sequence));
    return SqlLiterals::AsLong(query.value(0));
}

QVariant OdbcBackend::CallProcedure(const QString& procedure,
                                    const QList<ProcedureParameter>& parameters) {
    RequirePlainName(procedure, QStringLiteral("procedure"));
    QStringList marks;
    for (qsizetype i = 0; i < parameters.size(); ++i)
        marks << QStringLiteral("?");
    QSqlQuery query(m_connection.Database());
    if (!query.prepare(
            QStringLiteral("{call %1(%2)}").arg(procedure, marks.join(QLatin1Char(',')))))
        throw Error(query.lastError().text());
    int output = -1;
    for (qsizetype i = 0; i < parameters.size(); ++i) {
        const ProcedureParameter& parameter = parameters[i];
        const bool integer =
            parameter.type.compare(QLatin1String("integer"), Qt::CaseInsensitive) == 0;
        if (parameter.value.isNull() && output < 0) {
            output = static_cast<int>(i);
            query.bindValue(output,
                            QVariant(QMetaType(integer ? QMetaType::Int : QMetaType::QString)),
                            QSql::InOut);
        } else {
            query.bindValue(static_cast<int>(i), parameter.value);
        }
    }
    if (!query.exec())
        throw Error(
            QStringLiteral("%1\nStatement: {call %2}").arg(query.lastError().text(), procedure));
    return output < 0 ? QVariant() : query.boundValue(output);
}

QHash<QString, qint32> OdbcBackend::ColumnsOf(const QString& table) {
    RequirePlainName(table, QStringLiteral("table"));
    const QSqlDatabase database = m_connection.Database();
    QSqlRecord record = database.record(table);
    if (record.isEmpty())
        record = database.record(table.toUpper());
    if (record.isEmpty())
        record = database.record(table.toLower());
    QHash<QString, qint32> columns;
    for (int i = 0; i < record.count(); ++i) {
        const QSqlField field = record.field(i);
        const bool text = field.metaType().id() == QMetaType::QString;
        columns.insert(field.name().toCaseFolded(), text ? qMax(0, field.length()) : 0);
    }
    return columns;
}

} // namespace Orvane::Studio
