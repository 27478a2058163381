#include "orvane/host/HostRegistry.h"

#include "orvane/host/OrvaneError.h"

namespace Orvane {

namespace {

std::shared_ptr<IEntityChooser>& defaultEntityChooser() {
    static std::shared_ptr<IEntityChooser> chooser;
    return chooser;
}

std::shared_ptr<IEntityChooser>& hostEntityChooser() {
    static std::shared_ptr<IEntityChooser> chooser;
    return chooser;
}

std::shared_ptr<ISourceCatalog>& sourceCatalog() {
    static std::shared_ptr<ISourceCatalog> catalog;
    return catalog;
}

HostComponents& installed() {
    static HostComponents components;
    return components;
}

template <typename T> T& require(const std::shared_ptr<T>& component, const char* role) {
    if (!component)
        throw Error(QStringLiteral("The host has not installed its %1.").arg(QLatin1String(role)));
    return *component;
}

} // namespace

void HostRegistry::Install(HostComponents components) {
    installed() = std::move(components);
}

void HostRegistry::Uninstall() {
    installed() = HostComponents();
    hostEntityChooser().reset();
    sourceCatalog().reset();
}

bool HostRegistry::IsInstalled() {
    const HostComponents& components = installed();
    return components.query && components.fieldInfo && components.application && components.widgets;
}

bool HostRegistry::HasQuery() {
    return installed().query != nullptr;
}

IQueryService& HostRegistry::Query() {
    return require(installed().query, "query service");
}

bool HostRegistry::HasWidgets() {
    return installed().widgets != nullptr;
}

std::shared_ptr<IQueryService> HostRegistry::QueryInstance() {
    return installed().query;
}

IFieldInfoService& HostRegistry::FieldInfo() {
    return require(installed().fieldInfo, "field-information service");
}

IApplication& HostRegistry::App() {
    return require(installed().application, "application object");
}

IWidgetFactory& HostRegistry::Widgets() {
    return require(installed().widgets, "widget factory");
}

void HostRegistry::InstallEntityChooser(std::shared_ptr<IEntityChooser> chooser) {
    hostEntityChooser() = std::move(chooser);
}

IEntityChooser& HostRegistry::EntityChooser() {
    if (hostEntityChooser())
        return *hostEntityChooser();
    return require(defaultEntityChooser(), "entity chooser");
}

void HostRegistry::SetDefaultEntityChooser(std::shared_ptr<IEntityChooser> chooser) {
    defaultEntityChooser() = std::move(chooser);
}

void HostRegistry::InstallSourceCatalog(std::shared_ptr<ISourceCatalog> catalog) {
    sourceCatalog() = std::move(catalog);
}

bool HostRegistry::HasSourceCatalog() {
    return sourceCatalog() != nullptr;
}

ISourceCatalog& HostRegistry::SourceCatalog() {
    return require(sourceCatalog(), "source catalog");
}

} // namespace Orvane
