#include "studio/db/SqliteProcedures.h"

#include "orvane/host/OrvaneError.h"
#include "studio/db/SqlConnection.h"
#include "studio/db/SqlLiterals.h"
#include "studio/db/SqliteBackend.h"

#include <QSqlQuery>

namespace Orvane::Studio {

namespace {

const QString CreateField = QStringLiteral("eds_client.createfield");
const QString DeleteColumn = QStringLiteral("eds_client.deletecolumn");
const QString AddTechFromMask = QStringLiteral("qv_dictionary.add_tech_from_mask");

void requireCount(const QString& procedure, const QList<ProcedureParameter>& parameters,
                  qsizetype count) {
    if (parameters.size() != count)
        throw Error(QStringLiteral("%1 takes %2 parameters; %3 were given.")
                        .arg(procedure)
                        .arg(count)
                        .arg(parameters.size()));
}

qint32 integer(const ProcedureParameter& parameter) {
    return SqlLiterals::AsLong(parameter.value);
}

// A null text stays null.
QVariant text(const ProcedureParameter& parameter) {
    return parameter.value.isNull() ? QVariant() : QVariant(parameter.value.toString());
}

} // namespace

QVariant SqliteProcedures::Call(const QString& procedure,
                                const QList<ProcedureParameter>& parameters) {
    const QString name = procedure.toLower();
    if (name != CreateField && name != DeleteColumn && name != AddTechFromMask)
        throw Error(QStringLiteral("There is no stored procedure %1.").arg(procedure));
    m_connection.Run(QStringLiteral("SAVEPOINT orvane_procedure"));
    try {
        const QVariant result = dispatch(name, parameters);
        m_connection.Run(QStringLiteral("RELEASE orvane_procedure"));
        return result;
    } catch (const Error& error) {
        m_connection.Run(QStringLiteral("ROLLBACK TO orvane_procedure"));
        m_connection.Run(QStringLiteral("RELEASE orvane_procedure"));
        throw Error(QStringLiteral("%1: %2").arg(procedure, error.message()));
    }
}

QVariant SqliteProcedures::dispatch(const QString& procedure,
                                    const QList<ProcedureParameter>& parameters) {
    if (procedure == CreateField) {
        requireCount(procedure, parameters, 15);
        return createField(parameters);
    }
    if (procedure == DeleteColumn) {
        requireCount(procedure, parameters, 1);
        deleteColumn(integer(parameters[0]));
        return {};
    }
    requireCount(procedure, parameters, 2);
    addTechFromMask(integer(parameters[0]), integer(parameters[1]));
    return {};
}

qint32 SqliteProcedures::createField(const QList<ProcedureParameter>& p) {
    const qint32 edsId = integer(p[1]);
    const qint32 columnId = integer(p[2]);
    const qint32 entityId = integer(p[3]);
    requireExternalEntity(entityId);
    const qint32 groupId = externalGroupId(p[13].value);
    const qint32 fieldId = SqliteBackend::NextValue(m_connection, QStringLiteral("sq_qvd_field"));
    m_connection.Run(
        QStringLiteral(
            "INSERT INTO qvd_field_def (field_id, field_desc, field_aggregator, datatype, "
            "field_group_id, app_group, field_kind, technologies, field_style) "
            "VALUES (?, ?, ?, ?, ?, 'Traffic', ?, ?, ?)"),
        {fieldId, text(p[5]), integer(p[12]), p[9].value.toString(), groupId, text(p[8]),
         text(p[10]), integer(p[14])});
    m_connection.Run(QStringLiteral("INSERT INTO qvd_dict_name (field_id, entity_id, name, "
                                    "report_header, report_header2) VALUES (?, ?, ?, ?, ?)"),
                     {fieldId, entityId, p[4].value.toString(), text(p[6]), text(p[7])});
    addTechFromMask(fieldId, integer(p[11]));
    m_connection.Run(QStringLiteral("DELETE FROM qvd_eds_def WHERE eds_id = ? AND col_id = ?"),
                     {edsId, columnId});
    m_connection.Run(
        QStringLiteral("INSERT INTO qvd_eds_def (eds_id, col_id, field_id) VALUES (?, ?, ?)"),
        {edsId, columnId, fieldId});
    return fieldId;
}

void SqliteProcedures::requireExternalEntity(qint32 entityId) {
    QSqlQuery query = m_connection.Run(
        QStringLiteral("SELECT allow_external FROM qvn_entity WHERE entity_id = ?"), {entityId});
    if (!query.next())
        throw Error(QStringLiteral("entity %1 does not exist").arg(entityId));
    if (query.value(0).toString() != QLatin1String("Y"))
        throw Error(QStringLiteral("entity %1 may not be used for external data").arg(entityId));
}

// The EXT group; a caller that names another group is refused.
qint32 SqliteProcedures::externalGroupId(const QVariant& requested) {
    QSqlQuery query = m_connection.Run(QStringLiteral(
        "SELECT field_group_id FROM qvd_field_group WHERE field_group_short = 'EXT'"));
    if (!query.next())
        throw Error(QStringLiteral("the field group EXT does not exist"));
    const qint32 external = SqlLiterals::AsLong(query.value(0));
    const qint32 asked = SqlLiterals::AsLong(requested);
    if (asked != 0 && asked != external)
        throw Error(QStringLiteral("field group %1 is not the external-data group EXT").arg(asked));
    return external;
}

void SqliteProcedures::deleteColumn(qint32 columnId) {
    QList<qint32> fields;
    QSqlQuery mapped = m_connection.Run(
        QStringLiteral("SELECT field_id FROM qvd_eds_def WHERE col_id = ?"), {columnId});
    while (mapped.next())
        fields << SqlLiterals::AsLong(mapped.value(0));
    mapped.finish();
    m_connection.Run(QStringLiteral("DELETE FROM eds_primarykey WHERE col_id = ?"), {columnId});
    m_connection.Run(QStringLiteral("DELETE FROM qvd_eds_def WHERE col_id = ?"), {columnId});
    m_connection.Run(QStringLiteral("DELETE FROM eds_column WHERE col_id = ?"), {columnId});
    for (const qint32 fieldId : fields)
        deleteUnusedExternalField(fieldId);
}

// Its names, technologies and extra values go with it (ON DELETE CASCADE).
void SqliteProcedures::deleteUnusedExternalField(qint32 fieldId) {
    m_connection.Run(
        QStringLiteral(
            "DELETE FROM qvd_field_def WHERE field_id = ? AND field_group_id = "
            "(SELECT field_group_id FROM qvd_field_group WHERE field_group_short = 'EXT') "
            "AND NOT EXISTS (SELECT 1 FROM qvd_eds_def m WHERE m.field_id = "
            "qvd_field_def.field_id) "
            "AND NOT EXISTS (SELECT 1 FROM eds_primarykey k WHERE k.field_id = "
            "qvd_field_def.field_id) "
            "AND NOT EXISTS (SELECT 1 FROM pm_templatefield t "
            "WHERE t.field_id = qvd_field_def.field_id)"),
        {fieldId});
}

void SqliteProcedures::addTechFromMask(qint32 fieldId, qint32 mask) {
    if (mask < 0)
        throw Error(QStringLiteral("technology mask %1 is negative").arg(mask));
    if (mask == 0)
        return;
    QSqlQuery field = m_connection.Run(
        QStringLiteral("SELECT 1 FROM qvd_field_def WHERE field_id = ?"), {fieldId});
    if (!field.next())
        throw Error(QStringLiteral("field %1 does not exist").arg(fieldId));
    field.finish();
    qint32 known = 0;
    QSqlQuery bits = m_connection.Run(QStringLiteral("SELECT tech_bit FROM qvd_technology"));
    while (bits.next())
        known |= SqlLiterals::AsLong(bits.value(0));
    bits.finish();
    if ((mask & ~known) != 0)
        throw Error(QStringLiteral("technology mask %1 holds bits that name no technology (%2)")
                        .arg(mask)
                        .arg(mask & ~known));
    m_connection.Run(
        QStringLiteral("INSERT INTO qvd_field_tech (field_id, tech_id) "
                       "SELECT ?, t.tech_id FROM qvd_technology t WHERE (t.tech_bit & ?) <> 0 "
                       "AND NOT EXISTS (SELECT 1 FROM qvd_field_tech x "
                       "WHERE x.field_id = ? AND x.tech_id = t.tech_id)"),
        {fieldId, mask, fieldId});
}

} // namespace Orvane::Studio
