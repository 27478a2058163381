#pragma once

#include "orvane/host/IWidgetFactory.h"

#include <memory>

namespace Orvane::Studio {

class DictionaryService;

// Makes the studio's template tree and technologies checklist for the library's dialogs, both
// over the one dictionary service, which the factory keeps alive.
class StudioWidgetFactory : public IWidgetFactory {
public:
    explicit StudioWidgetFactory(std::shared_ptr<DictionaryService> dictionary);

    XTemplate* CreateTemplateTree(QWidget* parent) override;
    XTechnologies* CreateTechnologies(QWidget* parent) override;

private:
    std::shared_ptr<DictionaryService> m_dictionary;
};

} // namespace Orvane::Studio
