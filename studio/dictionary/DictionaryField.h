#pragma once

#include "orvane/host/IField.h"
#include "studio/dictionary/FieldValues.h"

namespace Orvane {
class IQueryService;
}

namespace Orvane::Studio {

// A field object of the studio's dictionary: the values of one field, read from the dictionary
// tables or, for a field that does not exist yet, kept from its save.
//
// Save(request, result), as the field editor calls it:
// - The request's field id must be the object's own (0 for a new field).
// - The name, trimmed, must be free in the field's entity: another field of the entity with the
//   same name, regardless of case and surrounding blanks, fails with code 2 and the flag set.
// - A stored field (id > 0) is written at once, all or nothing: qvd_field_def (description,
//   aggregation pair, data type, technologies text, style, style colour, owner, time of save),
//   qvd_dict_name (name, headings), its technologies (the rows are replaced through
//   qv_dictionary.add_tech_from_mask) and its values of the extra columns in use. A stored field
//   keeps its entity, application group and field group.
// - A new field (id 0) writes nothing: its row needs the column it is made for, so
//   eds_client.createfield creates it when the document is saved, and the dictionary's
//   RegisterField then writes what that procedure does not take.
// - The request is checked against the dictionary first: the entity must exist, the data type be
//   I, F, S, E or D, the aggregation pair (0 for none) and every bit of the technology mask be
//   known. Such a refusal, and any database error, fails with code 1, the flag clear and the
//   message as description. A failed save leaves the object as it was.
// - Extra columns not in use keep their values; an in-use column given an empty text loses its
//   value.
// On success result holds the field id. The query service must outlive the object's saves.
class DictionaryField : public IField {
public:
    DictionaryField(IQueryService& query, FieldValues values);

    qint32 Field_Id() const override { return m_values.id; }
    void setField_Id(qint32 id) override { m_values.id = id; }
    QString Field_Name() const override { return m_values.name; }
    qint32 Entity_Id() const override { return m_values.entityId; }
    QString Entity_Label() const override { return m_values.entityLabel; }
    QString Description() const override { return m_values.description; }
    QString Heading1() const override { return m_values.heading1; }
    QString Heading2() const override { return m_values.heading2; }
    QString TimeAggregator() const override { return m_values.timeAggregator; }
    QString ElementAggregator() const override { return m_values.elementAggregator; }
    qint32 AggregationPairId() const override { return m_values.aggregationPairId; }
    QString DataType() const override { return m_values.dataType; }
    QString Technologies() const override { return m_values.technologies; }
    qint32 TechnologyMask() const override { return m_values.technologyMask; }
    qint32 Style() const override { return m_values.style; }
    qint32 StyleColour() const override { return m_values.styleColour; }
    QString ExtraColumnValue(const QString& column) const override;

    bool Save(const FieldSaveRequest& request, QVariant& result) override;
    FieldSaveError LastError() const override { return m_error; }

    const FieldValues& Values() const { return m_values; }
    void setValues(FieldValues values) { m_values = std::move(values); }
    QString GroupShort() const { return m_values.groupShort; }
    QString AppGroup() const { return m_values.appGroup; }
    qint32 OwnerId() const { return m_values.ownerId; }

private:
    IQueryService* m_query;
    FieldValues m_values;
    FieldSaveError m_error;
};

} // namespace Orvane::Studio
