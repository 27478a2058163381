#pragma once

#include <memory>

namespace Orvane {

class IApplication;
class IFieldInfoService;
class IQueryService;
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

    static bool HasQuery();
    static IQueryService& Query();
    // The installed instance, so that caches can tell which database they were filled from.
    static std::shared_ptr<IQueryService> QueryInstance();
    static IFieldInfoService& FieldInfo();
    static IApplication& App();
    static IWidgetFactory& Widgets();
};

} // namespace Orvane
