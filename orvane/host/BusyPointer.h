#pragma once

#include <QtGlobal>

namespace Orvane {

// Shows the host's hourglass for as long as it lives, and puts the pointer that was there back
// on every way out, an error included.
class BusyPointer {
public:
    BusyPointer();
    ~BusyPointer();
    BusyPointer(const BusyPointer&) = delete;
    BusyPointer& operator=(const BusyPointer&) = delete;

private:
    qint32 m_previous;
};

} // namespace Orvane
