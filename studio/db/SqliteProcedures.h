#pragma once

#include "orvane/host/IQueryService.h"

#include <QString>
#include <QVariant>

namespace Orvane::Studio {

class SqlConnection;

// The stored procedures of the schema as C++ routines, for SQLite, which has none of its own.
// They do what the PL/pgSQL functions of the PostgreSQL schema do; names compare without regard
// to case. Each call runs inside a savepoint, so it changes all or nothing.
//
// eds_client.createfield (15 parameters: out field id, eds id, column id, entity id, name,
//     description, heading 1, heading 2, kind, data type code, technologies text, technology
//     mask, aggregation-pair id, field group id, style): creates a field of the entity in the
//     "EXT" group (qvd_field_def, qvd_dict_name, its technologies), maps the column to it in
//     qvd_eds_def (replacing an earlier mapping of that column) and returns the new field id.
//     The entity must exist and allow external data; a group id other than EXT's is refused.
// eds_client.DeleteColumn (column id): deletes the column's key and mapping rows and the column;
//     then the EXT fields the column was mapped to, unless another column, a key or a report
//     template still uses them. An unknown column id changes nothing.
// qv_dictionary.add_tech_from_mask (field id, mask): one qvd_field_tech row per technology whose
//     bit is in the mask; rows already there stay. A bit that names no technology is refused.
class SqliteProcedures {
public:
    explicit SqliteProcedures(SqlConnection& connection)
        : m_connection(connection) {}

    QVariant Call(const QString& procedure, const QList<ProcedureParameter>& parameters);

private:
    QVariant dispatch(const QString& procedure, const QList<ProcedureParameter>& parameters);
    qint32 createField(const QList<ProcedureParameter>& parameters);
    void deleteColumn(qint32 columnId);
    void addTechFromMask(qint32 fieldId, qint32 mask);
    void requireExternalEntity(qint32 entityId);
    qint32 externalGroupId(const QVariant& requested);
    void deleteUnusedExternalField(qint32 fieldId);

    SqlConnection& m_connection;
};

} // namespace Orvane::Studio
