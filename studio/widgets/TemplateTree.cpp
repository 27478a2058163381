#include "studio/widgets/TemplateTree.h"

#include "studio/dictionary/DictionaryField.h"
#include "studio/dictionary/DictionaryService.h"

#include <QHeaderView>
#include <QSet>
#include <QTreeWidget>
#include <QTreeWidgetItemIterator>
#include <QVBoxLayout>
#include <algorithm>

namespace Orvane::Studio {

namespace {

constexpr int KindRole = Qt::UserRole;
constexpr int IdRole = Qt::UserRole + 1;
constexpr int EntityRole = Qt::UserRole + 2;
constexpr int EntityKind = 0;
constexpr int FieldKind = 1;

// The entity the schema names and the ones above it; every entity when it names none.
QList<EntityRow> branchOf(const QList<EntityRow>& entities, const QString& schema) {
    QHash<qint32, const EntityRow*> byId;
    const EntityRow* named = nullptr;
    for (const EntityRow& entity : entities) {
        byId.insert(entity.id, &entity);
        if (entity.name.compare(schema.trimmed(), Qt::CaseInsensitive) == 0)
            named = &entity;
    }
    if (!named)
        return entities;
    QSet<qint32> chain;
    for (const EntityRow* entity = named; entity && !chain.contains(entity->id);
         entity = byId.value(entity->parentId))
        chain.insert(entity->id);
    QList<EntityRow> branch;
    for (const EntityRow& entity : entities) {
        if (chain.contains(entity.id))
            branch << entity;
    }
    return branch;
}

// The entity's parent among the loaded ones; 0 at the top or where the parents run in a circle.
qint32 loadedParent(const EntityRow& entity, const QHash<qint32, qint32>& parents) {
    QSet<qint32> seen{entity.id};
    for (qint32 id = entity.parentId; parents.contains(id); id = parents.value(id)) {
        if (seen.contains(id))
            return 0;
        seen.insert(id);
    }
    return parents.contains(entity.parentId) ? entity.parentId : 0;
}

bool byText(const QString& a, const QString& b) {
    return a.compare(b, Qt::CaseInsensitive) < 0;
}

QTreeWidgetItem* entityItem(const EntityRow& entity) {
    auto* item = new QTreeWidgetItem({entity.label});
    item->setToolTip(0, entity.name);
    item->setData(0, KindRole, EntityKind);
    item->setData(0, IdRole, entity.id);
    item->setData(0, EntityRole, entity.id);
    return item;
}

QTreeWidgetItem* fieldItem(const DictionaryField& field) {
    auto* item = new QTreeWidgetItem({field.Field_Name(), field.Description()});
    item->setData(0, KindRole, FieldKind);
    item->setData(0, IdRole, field.Field_Id());
    item->setData(0, EntityRole, field.Entity_Id());
    return item;
}

} // namespace

TemplateTree::TemplateTree(DictionaryService& dictionary, QWidget* parent)
    : XTemplate(parent)
    , m_dictionary(dictionary) {
    tvwTemplate = new QTreeWidget(this);
    tvwTemplate->setObjectName(QStringLiteral("tvwTemplate"));
    tvwTemplate->setColumnCount(2);
    tvwTemplate->setHeaderLabels({tr("Name"), tr("Description")});
    tvwTemplate->header()->setSectionResizeMode(0, QHeaderView::ResizeToContents);
    tvwTemplate->setSelectionMode(QAbstractItemView::SingleSelection);
    setFocusProxy(tvwTemplate);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(tvwTemplate);
    connect(tvwTemplate, &QTreeWidget::itemDoubleClicked, this, &TemplateTree::chooseItem);
}

TemplateTree::~TemplateTree() = default;

void TemplateTree::LoadTree(const QString& schema, const QString& category) {
    tvwTemplate->clear();
    m_fields.clear();
    QList<EntityRow> entities = branchOf(m_dictionary.Entities(), schema);
    std::stable_sort(entities.begin(), entities.end(), [](const EntityRow& a, const EntityRow& b) {
        return byText(a.label, b.label);
    });
    QHash<qint32, QTreeWidgetItem*> items;
    QHash<qint32, qint32> parents;
    for (const EntityRow& entity : entities) {
        items.insert(entity.id, entityItem(entity));
        parents.insert(entity.id, entity.parentId);
    }
    if (m_showFields != 0)
        addFields(category, items);
    // Sub-entities follow the fields of the entity above them.
    for (const EntityRow& entity : entities) {
        if (QTreeWidgetItem* parent = items.value(loadedParent(entity, parents)))
            parent->addChild(items.value(entity.id));
        else
            tvwTemplate->addTopLevelItem(items.value(entity.id));
    }
    tvwTemplate->expandAll();
    applyFilters();
}

void TemplateTree::addFields(const QString& category,
                             const QHash<qint32, QTreeWidgetItem*>& entities) {
    auto fields = m_dictionary.FieldsOfAppGroup(category);
    std::stable_sort(fields.begin(), fields.end(), [](const auto& a, const auto& b) {
        return byText(a->Field_Name(), b->Field_Name());
    });
    for (const auto& field : fields) {
        QTreeWidgetItem* parent = entities.value(field->Entity_Id());
        if (!parent)
            continue;
        QTreeWidgetItem* item = fieldItem(*field);
        parent->addChild(item);
        m_fields.insert(item, field);
    }
}

void TemplateTree::setFieldTypeFilter(const QString& mask) {
    m_fieldTypeFilter = mask;
    applyFilters();
}

void TemplateTree::setTechTypeFilter(const QVariant& techType) {
    m_techTypeFilter = techType;
    applyFilters();
}

void TemplateTree::applyFilters() {
    for (auto it = m_fields.cbegin(); it != m_fields.cend(); ++it) {
        const bool shown = passesFilters(*it.value());
        it.key()->setHidden(!shown);
        if (!shown)
            it.key()->setSelected(false);
    }
}

bool TemplateTree::passesFilters(const DictionaryField& field) const {
    const QStringList groups = DictionaryService::MaskGroups(m_fieldTypeFilter);
    if (!groups.isEmpty() && !groups.contains(field.GroupShort(), Qt::CaseInsensitive))
        return false;
    const qint32 technology = m_techTypeFilter.toInt();
    return technology == 0 || (field.TechnologyMask() & technology) != 0;
}

void TemplateTree::SelectItem(qint32 id) {
    QTreeWidgetItem* item = findItem(m_fields.isEmpty() ? EntityKind : FieldKind, id);
    if (!item)
        return;
    tvwTemplate->setCurrentItem(item);
    tvwTemplate->scrollToItem(item);
}

QTreeWidgetItem* TemplateTree::findItem(int kind, qint32 id) const {
    for (QTreeWidgetItemIterator it(tvwTemplate); *it; ++it) {
        QTreeWidgetItem* item = *it;
        if (item->data(0, KindRole).toInt() == kind && item->data(0, IdRole).toInt() == id &&
            !item->isHidden())
            return item;
    }
    return nullptr;
}

QString TemplateTree::SelectedKey() const {
    const QList<QTreeWidgetItem*> selected = tvwTemplate->selectedItems();
    if (selected.isEmpty())
        return QString();
    return QString::number(selected.first()->data(0, EntityRole).toInt());
}

QList<std::shared_ptr<IField>> TemplateTree::SelectedFields() const {
    QList<std::shared_ptr<IField>> fields;
    for (QTreeWidgetItem* item : tvwTemplate->selectedItems()) {
        if (const auto field = m_fields.value(item))
            fields << field;
    }
    return fields;
}

void TemplateTree::chooseItem(QTreeWidgetItem* item) {
    const auto field = m_fields.value(item);
    if (field)
        emit FieldChosen(field, QString::number(field->Entity_Id()));
}

} // namespace Orvane::Studio
