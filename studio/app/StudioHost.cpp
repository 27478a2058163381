#include "studio/app/StudioHost.h"

#include "orvane/host/HostRegistry.h"
#include "studio/app/StudioApplication.h"
#include "studio/db/OdbcCatalog.h"
#include "studio/db/SqlQueryService.h"
#include "studio/dictionary/DictionaryService.h"
#include "studio/widgets/StudioWidgetFactory.h"

namespace Orvane::Studio {

StudioHost::StudioHost(std::shared_ptr<SqlQueryService> database, bool editPermission)
    : m_application(std::make_shared<StudioApplication>(editPermission)) {
    Use(std::move(database));
}

void StudioHost::Use(std::shared_ptr<SqlQueryService> database) {
    m_database = std::move(database);
    m_dictionary = std::make_shared<DictionaryService>(*m_database);
    m_widgets = std::make_shared<StudioWidgetFactory>(m_dictionary);
    HostRegistry::Install({m_database, m_dictionary, m_application, m_widgets});
    HostRegistry::InstallSourceCatalog(std::make_shared<OdbcCatalog>());
}

StudioHost::~StudioHost() {
    HostRegistry::Uninstall();
}

} // namespace Orvane::Studio
