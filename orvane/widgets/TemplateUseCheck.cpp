#include "orvane/widgets/TemplateUseCheck.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/model/ColumnSave.h"

namespace Orvane::mOrvane {

bool TemplateUseCheck(bool isTimeStamp, qint32 fieldId) {
    IApplication& app = HostRegistry::App();
    if (isTimeStamp) {
        return app.MsgBox(
                   QStringLiteral(
                       "This will remove the 'Time Stamp' column and may affect existing reports"),
                   MsgBoxButtons::YesNo, MsgBoxIcon::Critical,
                   QStringLiteral("ARE YOU SURE?")) == MsgBoxResult::Yes;
    }
    if (!ColumnSave::FieldInTemplates(fieldId))
        return true;
    app.MsgBox(
        QStringLiteral("This column may not be deleted because it is currently in use in ") +
            MsgBoxLineBreak +
            QStringLiteral("one or more templates.  It must be removed from the template(s)") +
            MsgBoxLineBreak + QStringLiteral("before it may be deleted from this document."),
        MsgBoxButtons::OKOnly, MsgBoxIcon::Critical, QString());
    return false;
}

} // namespace Orvane::mOrvane
