#pragma once

#include "orvane/host/IFieldInfoService.h"
#include "studio/dictionary/FieldValues.h"

#include <QList>
#include <memory>
#include <optional>

namespace Orvane {
class IQueryService;
}

namespace Orvane::Studio {

class DictionaryEntity;
class DictionaryField;

// The studio's field-information service: the dictionary of entities and fields, read from its
// tables (qvn_entity, qvd_field_def, qvd_dict_name, qvd_field_tech, qvd_technology,
// qvd_aggregator, qvd_aggregation_pair, qvd_dict_setting, qvd_extra_column, qvd_field_extra,
// qvd_field_group) through the query service, which must outlive it.
//
// Nothing is cached: every lookup reads the database, so a field that a save created is found
// by the next lookup, and a save that the host rolled back leaves nothing behind here.
//
// Rules of the studio's dictionary:
// - Entities: EntityById answers any entity, null for an unknown id. ExternalDataEntity takes
//   the entity id as text (the tree's key) and answers null for an entity whose allow_external is
//   'N', for an unknown id and for a key that is no number. The category names the application
//   group; entities are the same in every group, so it does not change the answer.
// - Field lookups: FieldsByIds reads every field of a comma-separated id list in one statement,
//   keyed by the decimal id; 0, unknown ids and pieces that are no number are left out.
//   FieldById answers the field when it belongs to the application group, else null.
// - Field-type masks: a mask is the comma-separated short names of the field groups whose fields
//   the template tree shows; an empty mask shows every field. FieldTypeMask knows the names
//     "External": the fields external data may use: EXT (the fields data sources fill) and SYS
//                 (the system's stored counters and identities, which key columns name); the
//                 computed indicators of KPI are left out;
//     "All":      every group;
//     a group's short name or name ("EXT", "External Data"): that group alone;
//   case aside. Any other name gives the empty mask. The category does not change the mask.
// - Technology types: TechnologyTypes lists "All" and then every technology in bit order;
//   TechnologyType answers the technology's bit (GSM 1, UMTS 2, LTE 4, NR 8 in the demo), 0 for
//   "All" and null for a name it does not know; the tree shows every field for 0 and null.
// - TextLimits: the declared widths of qvd_dict_name.name, qvd_field_def.field_desc,
//   qvd_dict_name.report_header and report_header2; where the catalog does not tell (some ODBC
//   drivers), the widths of the studio's schema (30, 80, 20, 20).
// - Aggregators: AggregatorNames in display order; ElementAggregationOffered when the setting
//   ElementAggregation is 'Y'; AggregationPairId for a time and an element aggregator, an empty
//   element aggregator asking for the pair without one.
// - RegisterField: called right after eds_client.createfield made the field; writes what that
//   procedure does not take (style colour, owner, time of save, extra values) and, for the
//   studio's own field objects, reads the field back so that the object holds what the
//   dictionary holds (its entity label, group, technologies).
// - ChooseStyle shows FieldStyleDialog through the host application's ShowModal.
class DictionaryService : public IFieldInfoService {
public:
    explicit DictionaryService(IQueryService& query);
    ~DictionaryService() override;

    std::shared_ptr<IEntity> EntityById(qint32 entityId) override;
    QHash<QString, std::shared_ptr<IField>> FieldsByIds(const QString& idList) override;
    std::shared_ptr<IField> FieldById(const QString& appGroup, qint32 fieldId) override;
    std::shared_ptr<IField> NewField() override;
    void RegisterField(const std::shared_ptr<IField>& field) override;

    std::shared_ptr<IEntity> ExternalDataEntity(const QString& category,
                                                const QString& key) override;
    QString FieldTypeMask(const QString& filterName, const QString& category) override;
    QStringList TechnologyTypes() override;
    QVariant TechnologyType(const QString& name) override;

    FieldTextLimits TextLimits() override;
    QStringList AggregatorNames() override;
    bool ElementAggregationOffered() override;
    std::optional<qint32> AggregationPairId(const QString& timeAggregator,
                                            const QString& elementAggregator) override;
    QList<ExtraColumn> ExtraColumns(const QString& appGroup) override;
    bool ChooseStyle(qint32& style, qint32& styleColour, QWidget* parent) override;

    // What the studio's widgets and entities read.
    QList<Technology> Technologies();
    // Every entity, by label.
    QList<EntityRow> Entities();
    std::optional<EntityRow> EntityRowById(qint32 entityId);
    QList<EntityField> FieldsOfEntity(qint32 entityId);
    // Every field of the application group, by entity and name.
    QList<std::shared_ptr<DictionaryField>> FieldsOfAppGroup(const QString& appGroup);
    // The group short names a field-type mask holds; empty for the empty mask.
    static QStringList MaskGroups(const QString& mask);

private:
    std::shared_ptr<DictionaryField> fieldFrom(FieldValues values);
    std::shared_ptr<DictionaryEntity> entityFrom(qint32 entityId);
    FieldValues valuesOf(const IField& field);

    IQueryService& m_query;
};

} // namespace Orvane::Studio
