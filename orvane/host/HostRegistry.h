#pragma once

#include <memory>

namespace Orvane {

class IApplication;
class IEntityChooser;
class IFieldInfoService;
class IQueryService;
class ISourceCatalog;
class IWidgetFactory;

// What a host hands the library at start-up.
struct HostComponents {
    std::shared_ptr<IQueryService> query;
    std::shared_ptr<IFieldInfoService> fieldInfo;
    std::shared_ptr<IApplication> application;
    std::shared_ptr<IWidgetFactory> widgets;
};

// The one place through which the library reaches its host. A component that was not installed
// is an Orvane::Error when asked for, except the query service, whose absence can be tested.
class HostRegistry {
public:
    static void Install(HostComponents components);
    static void Uninstall();

    // True when the query service, the field-information service, the application object and
    // the widget factory are all installed: before that the controls show that they have no host.
    static bool IsInstalled();
    static bool HasQuery();
    static bool HasWidgets();
    static IQueryService& Query();
    // The installed instance, so that caches can tell which database they were filled from.
    static std::shared_ptr<IQueryService> QueryInstance();
    static IFieldInfoService& FieldInfo();
    static IApplication& App();
    static IWidgetFactory& Widgets();
    // Optional: a host that asks for a new document's entity in its own way installs its chooser
    // here; Uninstall removes it. Without one the library's template-tree dialog asks.
    static void InstallEntityChooser(std::shared_ptr<IEntityChooser> chooser);
    // The host's chooser, or the library's own.
    static IEntityChooser& EntityChooser();
    // Called once by the library's dialogs, so that the model can ask for an entity without
    // knowing any dialog.
    static void SetDefaultEntityChooser(std::shared_ptr<IEntityChooser> chooser);
    // Optional: a host that can reach the databases ODBC sources read installs its catalog here;
    // Uninstall removes it.
    static void InstallSourceCatalog(std::shared_ptr<ISourceCatalog> catalog);
    static bool HasSourceCatalog();
    static ISourceCatalog& SourceCatalog();
};

} // namespace Orvane
