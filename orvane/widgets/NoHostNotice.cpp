#include "orvane/widgets/NoHostNotice.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IWidgetFactory.h"
#include "orvane/host/XTechnologies.h"
#include "orvane/host/XTemplate.h"
#include "orvane/widgets/ControlState.h"

#include <QBoxLayout>
#include <QCoreApplication>
#include <QLabel>

namespace Orvane::mOrvane {

namespace {

class EmptyTemplateTree : public XTemplate {
public:
    using XTemplate::XTemplate;

    qint32 Mode() const override { return m_mode; }
    void setMode(qint32 mode) override { m_mode = mode; }
    qint32 ShowFields() const override { return m_showFields; }
    void setShowFields(qint32 showFields) override { m_showFields = showFields; }
    void LoadTree(const QString&, const QString&) override {}
    QString FieldTypeFilter() const override { return m_fieldTypeFilter; }
    void setFieldTypeFilter(const QString& mask) override { m_fieldTypeFilter = mask; }
    QVariant TechTypeFilter() const override { return m_techTypeFilter; }
    void setTechTypeFilter(const QVariant& techType) override { m_techTypeFilter = techType; }
    QString TreeOwner() const override { return m_treeOwner; }
    void setTreeOwner(const QString& owner) override { m_treeOwner = owner; }
    void SelectItem(qint32) override {}
    QString SelectedKey() const override { return QString(); }
    QList<std::shared_ptr<IField>> SelectedFields() const override { return {}; }

private:
    qint32 m_mode = 0;
    qint32 m_showFields = 0;
    QString m_fieldTypeFilter;
    QVariant m_techTypeFilter;
    QString m_treeOwner;
};

class EmptyTechnologies : public XTechnologies {
public:
    using XTechnologies::XTechnologies;

    void Initialize() override {}
    QString Technologies() const override { return m_technologies; }
    void setTechnologies(const QString& technologies) override { m_technologies = technologies; }
    qint32 TechnologyMask() const override { return 0; }

private:
    QString m_technologies;
};

IWidgetFactory* installedFactory() {
    return HostRegistry::HasWidgets() ? &HostRegistry::Widgets() : nullptr;
}

} // namespace

bool ShowWhenNoHost(QWidget& control) {
    if (HostRegistry::IsInstalled())
        return false;
    auto* notice = new QLabel(QCoreApplication::translate(
                                  "Orvane::NoHost", "This control has no host: the application "
                                                    "has not installed Orvane's host components."),
                              &control);
    notice->setObjectName(QStringLiteral("lblNoHost"));
    notice->setWordWrap(true);
    if (auto* page = qobject_cast<QBoxLayout*>(control.layout()))
        page->insertWidget(0, notice);
    SetControlsEnabled(&control, false);
    return true;
}

XTemplate* CreateTemplateTree(QWidget* parent) {
    if (IWidgetFactory* factory = installedFactory())
        return factory->CreateTemplateTree(parent);
    return new EmptyTemplateTree(parent);
}

XTechnologies* CreateTechnologies(QWidget* parent) {
    if (IWidgetFactory* factory = installedFactory())
        return factory->CreateTechnologies(parent);
    return new EmptyTechnologies(parent);
}

} // namespace Orvane::mOrvane
