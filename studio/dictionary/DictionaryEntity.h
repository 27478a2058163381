#pragma once

#include "orvane/host/IEntity.h"
#include "studio/dictionary/FieldValues.h"

#include <QList>
#include <optional>

namespace Orvane::Studio {

class DictionaryService;

// An entity of the studio's dictionary. It knows its fields (ids and names) from the first time
// they are asked for; Reload() reads the entity again and has its fields read again when next
// asked for, so that fields a save created or renamed are known. The dictionary service must
// outlive the entity's reads.
class DictionaryEntity : public IEntity {
public:
    DictionaryEntity(DictionaryService& dictionary, EntityRow row);

    qint32 Entity_Id() const override { return m_row.id; }
    QString Entity_Name() const override { return m_row.name; }
    QString Entity_Label() const override { return m_row.label; }
    void Reload() override;

    bool AllowsExternalData() const { return m_row.allowExternal; }
    qint32 ParentId() const { return m_row.parentId; }
    // The entity's fields by name.
    const QList<EntityField>& Fields();
    // The id of the field with the name, regardless of case; 0 when the entity has none.
    qint32 FieldId(const QString& name);

private:
    DictionaryService* m_dictionary;
    EntityRow m_row;
    std::optional<QList<EntityField>> m_fields;
};

} // namespace Orvane::Studio
