#include "studio/dictionary/DictionaryEntity.h"

#include "studio/dictionary/DictionaryService.h"

namespace Orvane::Studio {

DictionaryEntity::DictionaryEntity(DictionaryService& dictionary, EntityRow row)
    : m_dictionary(&dictionary)
    , m_row(std::move(row)) {}

// An entity that is gone from the dictionary keeps what it last knew of itself, without fields.
// The fields are read when next asked for: a save reloads the entity, and most saves are not
// followed by a look at its fields, which for a large entity is the save's largest read.
void DictionaryEntity::Reload() {
    if (const std::optional<EntityRow> row = m_dictionary->EntityRowById(m_row.id))
        m_row = *row;
    m_fields.reset();
}

const QList<EntityField>& DictionaryEntity::Fields() {
    if (!m_fields)
        m_fields = m_dictionary->FieldsOfEntity(m_row.id);
    return *m_fields;
}

qint32 DictionaryEntity::FieldId(const QString& name) {
    for (const EntityField& field : Fields()) {
        if (field.name.compare(name.trimmed(), Qt::CaseInsensitive) == 0)
            return field.id;
    }
    return 0;
}

} // namespace Orvane::Studio
