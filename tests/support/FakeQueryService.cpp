#include "tests/support/FakeQueryService.h"

#include "orvane/host/OrvaneError.h"

namespace Orvane::Testing {

QVariant FakeRecordset::Value(const QString& field) const {
    if (Eof())
        throw Error(QStringLiteral("No current row to read \"%1\" from.").arg(field));
    const Row& row = m_rows.at(m_current);
    for (auto it = row.cbegin(); it != row.cend(); ++it) {
        if (it.key().compare(field, Qt::CaseInsensitive) == 0)
            return it.value();
    }
    throw Error(QStringLiteral("Item cannot be found: %1").arg(field));
}

void FakeQueryService::failIfScripted(const QString& statement) const {
    for (const auto& [fragment, message] : m_failures) {
        if (statement.contains(fragment))
            throw Error(message);
    }
}

std::shared_ptr<IRecordset> FakeQueryService::OpenRecordset(const QString& statement,
                                                            qint32 timeoutSeconds) {
    log << QStringLiteral("OPEN ") + statement;
    lastTimeout = timeoutSeconds;
    failIfScripted(statement);
    for (const auto& [fragment, rows] : m_answers) {
        if (statement.contains(fragment))
            return std::make_shared<FakeRecordset>(rows);
    }
    return std::make_shared<FakeRecordset>(QList<Row>());
}

void FakeQueryService::ExecuteStatement(const QString& statement) {
    log << QStringLiteral("EXEC ") + statement;
    failIfScripted(statement);
}

qint32 FakeQueryService::NextSequenceValue(const QString& sequence) {
    log << QStringLiteral("SEQ ") + sequence;
    return nextSequenceValue++;
}

QVariant FakeQueryService::CallProcedure(const QString& procedure,
                                         const QList<ProcedureParameter>& parameters) {
    QStringList shown;
    for (const auto& p : parameters)
        shown << p.type + QLatin1Char(':') +
                     (p.value.isNull() ? QStringLiteral("-") : p.value.toString());
    log << QStringLiteral("CALL %1(%2)").arg(procedure, shown.join(QStringLiteral(", ")));
    failIfScripted(procedure);
    return procedureResults.value(procedure);
}

bool FakeQueryService::ColumnExists(const QString& table, const QString& column) {
    return table.compare(QLatin1String("eds_column"), Qt::CaseInsensitive) == 0 &&
           column.compare(QLatin1String("editor_position"), Qt::CaseInsensitive) == 0 &&
           editorPosition;
}

qint32 FakeQueryService::ColumnWidth(const QString& table, const QString& column) {
    const bool colName = table.compare(QLatin1String("eds_column"), Qt::CaseInsensitive) == 0 &&
                         column.compare(QLatin1String("col_name"), Qt::CaseInsensitive) == 0;
    return colName ? colNameWidth : 0;
}

} // namespace Orvane::Testing
