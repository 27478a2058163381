#include "orvane/dialogs/EntityTreeChooser.h"

#include "orvane/dialogs/FSelectEntityTree.h"
#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"

namespace Orvane {

namespace {

// Installed as the default when the library is loaded; a host's own chooser takes precedence.
const bool Registered = [] {
    HostRegistry::SetDefaultEntityChooser(std::make_shared<EntityTreeChooser>());
    return true;
}();

} // namespace

std::shared_ptr<IEntity> EntityTreeChooser::ChooseEntity(const QString& sCaption,
                                                         const QString& sSchema) {
    FSelectEntityTree dialog;
    dialog.Initialize(sCaption, FSelectEntityTree::EntityOnlyMode, sSchema, 0);
    HostRegistry::App().ShowModal(dialog);
    return dialog.Ok() ? dialog.FieldCategory() : nullptr;
}

} // namespace Orvane
