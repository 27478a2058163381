#include "tests/support/FakeHost.h"

#include "orvane/host/HostRegistry.h"

namespace Orvane::Testing {

FakeHostTest::FakeHostTest() {
    HostRegistry::Install({query, dictionary, app, widgets});
}

FakeHostTest::~FakeHostTest() {
    HostRegistry::Uninstall();
}

} // namespace Orvane::Testing
