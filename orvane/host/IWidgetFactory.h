#pragma once

class QWidget;

namespace Orvane {

class XTechnologies;
class XTemplate;

// Creates the host's widgets that the library's dialogs embed.
class IWidgetFactory {
public:
    virtual ~IWidgetFactory() = default;

    virtual XTemplate* CreateTemplateTree(QWidget* parent) = 0;
    virtual XTechnologies* CreateTechnologies(QWidget* parent) = 0;
};

} // namespace Orvane
