#include "orvane/widgets/TemplateUseCheck.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/model/ColumnSave.h"

#include <QCoreApplication>

namespace Orvane::mOrvane {

namespace {

// The texts of this file, in one translation context.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Orvane::mOrvane)
};

} // namespace

bool TemplateUseCheck(bool isTimeStamp, qint32 fieldId) {
    IApplication& app = HostRegistry::App();
    if (isTimeStamp) {
        return app.MsgBox(
                   Texts::tr(
                       "This will remove the 'Time Stamp' column and may affect existing reports"),
                   MsgBoxButtons::YesNo, MsgBoxIcon::Critical,
                   Texts::tr("ARE YOU SURE?")) == MsgBoxResult::Yes;
    }
    if (!ColumnSave::FieldInTemplates(fieldId))
        return true;
    app.MsgBox(Texts::tr("This column may not be deleted because it is currently in use in ") +
                   MsgBoxLineBreak +
                   Texts::tr("one or more templates.  It must be removed from the template(s)") +
                   MsgBoxLineBreak + Texts::tr("before it may be deleted from this document."),
               MsgBoxButtons::OKOnly, MsgBoxIcon::Critical, QString());
    return false;
}

} // namespace Orvane::mOrvane
