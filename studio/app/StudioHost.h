#pragma once

#include <memory>

namespace Orvane::Studio {

class DictionaryService;
class SqlQueryService;
class StudioApplication;
class StudioWidgetFactory;

// Assembles the Studio's host components on one database and installs them for the library;
// they stay installed for the life of this object.
class StudioHost {
public:
    explicit StudioHost(std::shared_ptr<SqlQueryService> database, bool editPermission = true);
    ~StudioHost();
    StudioHost(const StudioHost&) = delete;
    StudioHost& operator=(const StudioHost&) = delete;

    // Installs the components again, on another database.
    void Use(std::shared_ptr<SqlQueryService> database);

    const std::shared_ptr<SqlQueryService>& Database() const { return m_database; }
    StudioApplication& Application() const { return *m_application; }

private:
    void install();

    std::shared_ptr<SqlQueryService> m_database;
    std::shared_ptr<DictionaryService> m_dictionary;
    std::shared_ptr<StudioApplication> m_application;
    std::shared_ptr<StudioWidgetFactory> m_widgets;
};

} // namespace Orvane::Studio
