#pragma once

#include "orvane/host/HostRegistry.h"
#include "tests/support/FakeApplication.h"
#include "tests/support/FakeDictionary.h"
#include "tests/support/FakeQueryService.h"
#include "tests/support/FakeWidgets.h"
#include "tests/support/QtPrinters.h"

#include <gtest/gtest.h>
#include <memory>

namespace Orvane::Testing {

// Installs a fresh set of fakes for each test and removes them afterwards.
class FakeHostTest : public ::testing::Test {
protected:
    FakeHostTest() { HostRegistry::Install({query, dictionary, app, widgets}); }
    ~FakeHostTest() override { HostRegistry::Uninstall(); }

    std::shared_ptr<FakeQueryService> query = std::make_shared<FakeQueryService>();
    std::shared_ptr<FakeFieldInfoService> dictionary = std::make_shared<FakeFieldInfoService>();
    std::shared_ptr<FakeApplication> app = std::make_shared<FakeApplication>();
    std::shared_ptr<FakeWidgetFactory> widgets = std::make_shared<FakeWidgetFactory>();
};

} // namespace Orvane::Testing
