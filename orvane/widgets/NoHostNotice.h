#pragma once

class QWidget;

namespace Orvane {
class XTechnologies;
class XTemplate;
} // namespace Orvane

namespace Orvane::mOrvane {

// A control made before its host installed the library's components cannot act. Then it is
// disabled, says so in a label ("lblNoHost") at the top of its page, and true is returned.
bool ShowWhenNoHost(QWidget& control);

// The host's embedded widgets, or empty stand-ins while no widget factory is installed, so that a
// dialog made without a host still opens.
XTemplate* CreateTemplateTree(QWidget* parent);
XTechnologies* CreateTechnologies(QWidget* parent);

} // namespace Orvane::mOrvane
