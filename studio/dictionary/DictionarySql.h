#pragma once

#include <QList>
#include <QString>

namespace Orvane {
class IQueryService;
}

namespace Orvane::Studio {

// The statements of the studio's dictionary, written plainly (ANSI joins), so that they run
// unchanged on SQLite, PostgreSQL and, over ODBC, Oracle. Text values go through the query
// service's literals; ids are written in decimal.
namespace DictionarySql {

// Every field whose id is in the list, one row per extra value of a field (one at least), its
// technologies summed into tech_mask, ordered by field id. The list is split into IN lists of at
// most 1000 ids (Oracle's limit), joined by OR: one statement whatever its length.
QString FieldsWithIds(const QList<qint32>& ids);
// Every field of an application group, ordered by entity and name.
QString FieldsOfAppGroup(IQueryService& query, const QString& appGroup);
// The one field with the id, when it belongs to the application group.
QString FieldOfAppGroup(IQueryService& query, qint32 id, const QString& appGroup);

QString Entity(qint32 id);
QString Entities();
QString FieldsOfEntity(qint32 entityId);
// The id of a field of the entity with the name, regardless of case and surrounding blanks,
// other than exceptId.
QString FieldNamed(IQueryService& query, qint32 entityId, const QString& name, qint32 exceptId);

QString Technologies();
QString FieldGroups();
QString Aggregators();
QString AggregatorsOfPair(qint32 pairId);
// The pair of the two aggregators; an empty element aggregator asks for the pair without one.
QString AggregationPair(IQueryService& query, const QString& timeAggregator,
                        const QString& elementAggregator);
QString Setting(IQueryService& query, const QString& name);
QString ExtraColumns(IQueryService& query, const QString& appGroup);

QString UpdateFieldDefinition(qint32 fieldId, const QString& setList);
QString UpdateFieldNames(qint32 fieldId, const QString& setList);
QString DeleteFieldTechnologies(qint32 fieldId);
QString DeleteExtraValue(qint32 fieldId, qint32 extraColumnId);
QString InsertExtraValue(IQueryService& query, qint32 fieldId, qint32 extraColumnId,
                         const QString& value);

} // namespace DictionarySql

} // namespace Orvane::Studio
