#include "orvane/widgets/ErrorReport.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/host/OrvaneError.h"

#include <QWidget>

namespace Orvane::mOrvane {

bool RunReported(QWidget& control, const std::function<void()>& handler) {
    try {
        handler();
        return true;
    } catch (const Error& error) {
        HostRegistry::App().MsgBox(error.message(), MsgBoxButtons::OKOnly, MsgBoxIcon::Critical,
                                   control.window()->windowTitle());
        return false;
    }
}

} // namespace Orvane::mOrvane
