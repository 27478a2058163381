#include "studio/widgets/StudioWidgetFactory.h"

#include "studio/dictionary/DictionaryService.h"
#include "studio/widgets/TechnologiesChecklist.h"
#include "studio/widgets/TemplateTree.h"

namespace Orvane::Studio {

StudioWidgetFactory::StudioWidgetFactory(std::shared_ptr<DictionaryService> dictionary)
    : m_dictionary(std::move(dictionary)) {}

XTemplate* StudioWidgetFactory::CreateTemplateTree(QWidget* parent) {
    return new TemplateTree(*m_dictionary, parent);
}

XTechnologies* StudioWidgetFactory::CreateTechnologies(QWidget* parent) {
    return new TechnologiesChecklist(*m_dictionary, parent);
}

} // namespace Orvane::Studio
