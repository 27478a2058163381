#include "orvane/widgets/ErrorReport.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/host/OrvaneError.h"

#include <QWidget>

namespace Orvane::mOrvane {

namespace {

void report(const QWidget& control, const QString& message) {
    try {
        HostRegistry::App().MsgBox(message, MsgBoxButtons::OKOnly, MsgBoxIcon::Critical,
                                   control.window()->windowTitle());
    } catch (const Error&) {
        // No application object is installed, so there is no message box to show it in.
        qWarning("%s", qUtf8Printable(message));
    }
}

} // namespace

bool RunReported(QWidget& control, const std::function<void()>& handler) {
    try {
        handler();
        return true;
    } catch (const Error& error) {
        report(control, error.message());
        return false;
    }
}

} // namespace Orvane::mOrvane
