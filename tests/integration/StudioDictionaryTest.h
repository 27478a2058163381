#pragma once

#include "orvane/host/HostRegistry.h"
#include "studio/dictionary/DictionaryService.h"
#include "studio/widgets/StudioWidgetFactory.h"
#include "tests/integration/DatabaseTest.h"

namespace Orvane::Testing {

// A database test whose host has the studio's own dictionary service and widget factory
// installed, beside the real query service and the fake application.
class StudioDictionaryTest : public DatabaseTest {
protected:
    void SetUp() override {
        DatabaseTest::SetUp();
        if (IsSkipped() || HasFatalFailure())
            return;
        service = std::make_shared<Studio::DictionaryService>(*db);
        factory = std::make_shared<Studio::StudioWidgetFactory>(service);
        HostRegistry::Install({db, service, app, factory});
    }

    std::shared_ptr<Studio::DictionaryService> service;
    std::shared_ptr<Studio::StudioWidgetFactory> factory;
};

} // namespace Orvane::Testing
