#pragma once

#include <QList>
#include <QString>
#include <QVariant>
#include <QWidget>
#include <memory>

namespace Orvane {

class IField;

// The host's template tree: the dictionary's entities with their fields. The entity selector
// embeds one and drives it through these members; the host supplies the widget.
class XTemplate : public QWidget {
    Q_OBJECT

public:
    using QWidget::QWidget;

    // 2 = entities only, 0 = entities and fields.
    virtual qint32 Mode() const = 0;
    virtual void setMode(qint32 mode) = 0;
    virtual qint32 ShowFields() const = 0;
    virtual void setShowFields(qint32 showFields) = 0;
    virtual void LoadTree(const QString& schema, const QString& category) = 0;
    virtual QString FieldTypeFilter() const = 0;
    virtual void setFieldTypeFilter(const QString& mask) = 0;
    virtual QVariant TechTypeFilter() const = 0;
    virtual void setTechTypeFilter(const QVariant& techType) = 0;
    virtual QString TreeOwner() const = 0;
    virtual void setTreeOwner(const QString& owner) = 0;
    virtual void SelectItem(qint32 id) = 0;
    // Key of the selected entity; empty when none.
    virtual QString SelectedKey() const = 0;
    virtual QList<std::shared_ptr<IField>> SelectedFields() const = 0;

signals:
    // A field was chosen (double-clicked), with the key of its entity.
    void FieldChosen(std::shared_ptr<Orvane::IField> field, const QString& entityKey);
};

} // namespace Orvane
