#pragma once

#include "orvane/host/IWidgetFactory.h"
#include "orvane/host/XTechnologies.h"
#include "orvane/host/XTemplate.h"

namespace Orvane::Testing {

// A template tree whose selection the test sets directly.
class FakeTemplateTree : public XTemplate {
    Q_OBJECT

public:
    using XTemplate::XTemplate;

    qint32 Mode() const override { return mode; }
    void setMode(qint32 value) override { mode = value; }
    qint32 ShowFields() const override { return showFields; }
    void setShowFields(qint32 value) override { showFields = value; }
    void LoadTree(const QString& schema, const QString& category) override {
        loads << schema + QLatin1Char('|') + category;
    }
    QString FieldTypeFilter() const override { return fieldTypeFilter; }
    void setFieldTypeFilter(const QString& mask) override { fieldTypeFilter = mask; }
    QVariant TechTypeFilter() const override { return techTypeFilter; }
    void setTechTypeFilter(const QVariant& value) override { techTypeFilter = value; }
    QString TreeOwner() const override { return treeOwner; }
    void setTreeOwner(const QString& owner) override { treeOwner = owner; }
    void SelectItem(qint32 id) override { selectedItem = id; }
    QString SelectedKey() const override { return selectedKey; }
    QList<std::shared_ptr<IField>> SelectedFields() const override { return selectedFields; }

    qint32 mode = 0;
    qint32 showFields = 0;
    QStringList loads; // "schema|category" per LoadTree
    QString fieldTypeFilter;
    QVariant techTypeFilter;
    QString treeOwner;
    qint32 selectedItem = 0;
    QString selectedKey;
    QList<std::shared_ptr<IField>> selectedFields;
};

// A technologies checklist holding a mask.
class FakeTechnologies : public XTechnologies {
    Q_OBJECT

public:
    using XTechnologies::XTechnologies;

    void Initialize() override { ++initializations; }
    QString Technologies() const override { return QString::number(mask); }
    void setTechnologies(const QString& technologies) override { mask = technologies.toInt(); }
    qint32 TechnologyMask() const override { return mask; }
    // As if the user checked boxes.
    void check(qint32 newMask) {
        mask = newMask;
        emit Changed();
    }

    qint32 mask = 0;
    int initializations = 0;
};

class FakeWidgetFactory : public IWidgetFactory {
public:
    XTemplate* CreateTemplateTree(QWidget* parent) override {
        return lastTree = new FakeTemplateTree(parent);
    }
    XTechnologies* CreateTechnologies(QWidget* parent) override {
        return lastTechnologies = new FakeTechnologies(parent);
    }

    FakeTemplateTree* lastTree = nullptr;
    FakeTechnologies* lastTechnologies = nullptr;
};

} // namespace Orvane::Testing
