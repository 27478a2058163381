#pragma once

#include "orvane/host/IQueryService.h"
#include "orvane/host/IRecordset.h"
#include "studio/db/SqlLiterals.h"

#include <QHash>
#include <QList>
#include <QStringList>
#include <QVariantMap>

namespace Orvane::Testing {

using Row = QVariantMap;

// A recordset over rows given in the test; field names compare without regard to case.
class FakeRecordset : public IRecordset {
public:
    explicit FakeRecordset(QList<Row> rows)
        : m_rows(std::move(rows)) {}

    bool Eof() const override { return m_current >= m_rows.size(); }
    void MoveFirst() override { m_current = 0; }
    void MoveNext() override { ++m_current; }
    QVariant Value(const QString& field) const override;

private:
    QList<Row> m_rows;
    qsizetype m_current = 0;
};

// A query service that records every statement, sequence request and procedure call in order,
// and answers SELECTs from scripted tables.
//
// The log reads "OPEN <sql>", "EXEC <sql>", "SEQ <name>" and "CALL <name>(<type>:<value>, ...)".
// Literals are written and read as the SQL host writes and reads them.
class FakeQueryService : public IQueryService {
public:
    // The first script whose fragment the statement contains answers it; unscripted SELECTs get
    // an empty recordset.
    void Answer(const QString& fragment, QList<Row> rows) { m_answers.append({fragment, rows}); }
    // Makes OPEN/EXEC of a statement containing the fragment throw Orvane::Error.
    void FailOn(const QString& fragment, const QString& message = QStringLiteral("ORA-00942")) {
        m_failures.append({fragment, message});
    }

    bool editorPosition = true;
    qint32 colNameWidth = 40;
    qint32 nextSequenceValue = 100;
    // What CallProcedure returns for each procedure name; null when not set.
    QHash<QString, QVariant> procedureResults;

    QStringList log;

    std::shared_ptr<IRecordset> OpenRecordset(const QString& statement,
                                              qint32 timeoutSeconds = 60) override;
    void ExecuteStatement(const QString& statement) override;
    qint32 NextSequenceValue(const QString& sequence) override;
    QVariant CallProcedure(const QString& procedure,
                           const QList<ProcedureParameter>& parameters) override;
    QString BuildSetList(const QList<SetPair>& pairs) override { return Literals::SetList(pairs); }
    QString BuildValueList(const QVariantList& values) override {
        return Literals::ValueList(values);
    }
    QString FormatLiteral(const QVariant& value) override { return Literals::Format(value); }
    qint32 ValueAsLong(const QVariant& value) override { return Literals::AsLong(value); }
    bool ValueAsBoolean(const QVariant& value) override { return Literals::AsBoolean(value); }
    bool ColumnExists(const QString& table, const QString& column) override;
    qint32 ColumnWidth(const QString& table, const QString& column) override;

    qint32 lastTimeout = 0;

private:
    using Literals = Studio::SqlLiterals;
    void failIfScripted(const QString& statement) const;

    QList<std::pair<QString, QList<Row>>> m_answers;
    QList<std::pair<QString, QString>> m_failures;
};

} // namespace Orvane::Testing
