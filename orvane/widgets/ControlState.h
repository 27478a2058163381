#pragma once

class QWidget;

namespace Orvane::mOrvane {

// Enables or disables an owner's controls: labels and frames stay enabled, separators are left
// alone, containers are walked into, and every other control (with its menu actions) takes the
// flag.
void SetControlsEnabled(QWidget* owner, bool enabled);

} // namespace Orvane::mOrvane
