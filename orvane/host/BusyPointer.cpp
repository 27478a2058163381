#include "orvane/host/BusyPointer.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"

namespace Orvane {

BusyPointer::BusyPointer()
    : m_previous(HostRegistry::App().MousePointer()) {
    HostRegistry::App().setMousePointer(HourglassPointer);
}

BusyPointer::~BusyPointer() {
    HostRegistry::App().setMousePointer(m_previous);
}

} // namespace Orvane
