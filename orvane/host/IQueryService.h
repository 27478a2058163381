#pragma once

#include <QList>
#include <QString>
#include <QVariant>
#include <memory>
#include <utility>

namespace Orvane {

class IRecordset;

// One parameter of a stored-procedure call: value, name and type word ("integer" or "string").
struct ProcedureParameter {
    QVariant value;
    QString name;
    QString type;
};

// A column name and its new value, for a SET list.
using SetPair = std::pair<QString, QVariant>;

// The host's query service: every statement of the library goes through the one shared instance.
// Failures are raised as Orvane::Error carrying the database's own message.
class IQueryService {
public:
    virtual ~IQueryService() = default;

    // A forward-readable recordset, or null when the statement yields none.
    virtual std::shared_ptr<IRecordset> OpenRecordset(const QString& statement,
                                                      qint32 timeoutSeconds = 60) = 0;
    virtual void ExecuteStatement(const QString& statement) = 0;
    virtual qint32 NextSequenceValue(const QString& sequence) = 0;
    // Returns what the procedure hands back (eds_client.createfield: the new field id), or null.
    virtual QVariant CallProcedure(const QString& procedure,
                                   const QList<ProcedureParameter>& parameters) = 0;

    // The text of a SET list, beginning with a blank: " a = 1, b = 'x'".
    virtual QString BuildSetList(const QList<SetPair>& pairs) = 0;
    // The text of a VALUES list without its parentheses: "1,'x',NULL".
    virtual QString BuildValueList(const QVariantList& values) = 0;
    virtual QString FormatLiteral(const QVariant& value) = 0;

    // Null gives 0.
    virtual qint32 ValueAsLong(const QVariant& value) = 0;
    // "Y" is true.
    virtual bool ValueAsBoolean(const QVariant& value) = 0;

    virtual bool ColumnExists(const QString& table, const QString& column) = 0;
    // The declared width of a text column; 0 when the catalog does not say.
    virtual qint32 ColumnWidth(const QString& table, const QString& column) = 0;
};

} // namespace Orvane
