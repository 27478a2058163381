#pragma once

#include <QString>
#include <memory>

namespace Orvane {

class IEntity;

// Asks the user which entity the rows of a new data source describe. The library's own chooser
// is the template-tree dialog; a host installs another to ask in its own way.
class IEntityChooser {
public:
    virtual ~IEntityChooser() = default;

    // The chosen entity, or null when the user cancelled. sSchema names the dictionary schema
    // the entities come from.
    virtual std::shared_ptr<IEntity> ChooseEntity(const QString& sCaption,
                                                  const QString& sSchema) = 0;
};

} // namespace Orvane
