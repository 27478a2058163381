#pragma once

#include <functional>

class QWidget;

namespace Orvane::mOrvane {

// Runs an event handler of a control. A library error it raises (a database that failed, a
// value that did not convert) is shown to the user in a critical message box titled with the
// control's window title, instead of escaping into Qt's event loop; without an application
// object it is logged. False when it failed.
bool RunReported(QWidget& control, const std::function<void()>& handler);

} // namespace Orvane::mOrvane
