#pragma once

#include "orvane/host/IEntityChooser.h"

namespace Orvane {

// The library's entity chooser: the template-tree dialog in its entity-only mode, shown through
// the host's application object.
class EntityTreeChooser : public IEntityChooser {
public:
    std::shared_ptr<IEntity> ChooseEntity(const QString& sCaption, const QString& sSchema) override;
};

} // namespace Orvane
