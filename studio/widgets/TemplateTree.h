#pragma once

#include "orvane/host/XTemplate.h"

#include <QHash>

class QTreeWidget;
class QTreeWidgetItem;

namespace Orvane::Studio {

class DictionaryField;
class DictionaryService;

// The studio's template tree: the dictionary's entities, each under the entity above it in the
// network, and, when ShowFields is not 0 (the entity selector's mode 0), the fields of the
// loaded application group under their entity, before its sub-entities.
//
// - LoadTree(schema, category): category is the application group of the fields. A schema that
//   names an entity (regardless of case) loads that entity and the entities above it, the ones
//   whose fields can identify its rows; any other schema ("System") loads every entity.
// - FieldTypeFilter is a mask of field-group short names (DictionaryService::FieldTypeMask),
//   TechTypeFilter a technology bit (DictionaryService::TechnologyType); a field is shown when
//   its group is in the mask and it has the technology. An empty mask, a null or 0 technology
//   lets every field through. Entities are always shown. A field the filters hide is deselected.
// - SelectItem(id) selects the shown field with the id; without fields, the entity with the id.
// - SelectedKey is the entity id, as text, of the selected entity or of the selected field's
//   entity; SelectedFields the selected field (one at most).
// - A double-click on a field raises FieldChosen(field, key of its entity).
// - TreeOwner is kept for the caller; the studio's dictionary has one owner.
// The dictionary service must outlive the tree.
class TemplateTree : public XTemplate {
    Q_OBJECT

public:
    explicit TemplateTree(DictionaryService& dictionary, QWidget* parent = nullptr);
    ~TemplateTree() override;

    qint32 Mode() const override { return m_mode; }
    void setMode(qint32 mode) override { m_mode = mode; }
    qint32 ShowFields() const override { return m_showFields; }
    void setShowFields(qint32 showFields) override { m_showFields = showFields; }
    void LoadTree(const QString& schema, const QString& category) override;
    QString FieldTypeFilter() const override { return m_fieldTypeFilter; }
    void setFieldTypeFilter(const QString& mask) override;
    QVariant TechTypeFilter() const override { return m_techTypeFilter; }
    void setTechTypeFilter(const QVariant& techType) override;
    QString TreeOwner() const override { return m_treeOwner; }
    void setTreeOwner(const QString& owner) override { m_treeOwner = owner; }
    void SelectItem(qint32 id) override;
    QString SelectedKey() const override;
    QList<std::shared_ptr<IField>> SelectedFields() const override;

    QTreeWidget* tvwTemplate = nullptr;

private:
    void addFields(const QString& category, const QHash<qint32, QTreeWidgetItem*>& entities);
    void applyFilters();
    bool passesFilters(const DictionaryField& field) const;
    void chooseItem(QTreeWidgetItem* item);
    QTreeWidgetItem* findItem(int kind, qint32 id) const;

    DictionaryService& m_dictionary;
    qint32 m_mode = 0;
    qint32 m_showFields = 1;
    QString m_fieldTypeFilter;
    QVariant m_techTypeFilter;
    QString m_treeOwner;
    QHash<QTreeWidgetItem*, std::shared_ptr<DictionaryField>> m_fields;
};

} // namespace Orvane::Studio
