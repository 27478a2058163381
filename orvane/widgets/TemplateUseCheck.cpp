#include "orvane/widgets/TemplateUseCheck.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IApplication.h"
#include "orvane/model/ColumnSave.h"

#include <QCoreApplication>

namespace Orvane::mOrvane {

namespace {

QString tr(const char* text) {
    return QCoreApplication::translate("Orvane::mOrvane", text);
}

} // namespace

bool TemplateUseCheck(bool isTimeStamp, qint32 fieldId) {
    IApplication& app = HostRegistry::App();
    if (isTimeStamp) {
        return app.MsgBox(
                   tr("This will remove the 'Time Stamp' column and may affect existing reports"),
                   MsgBoxButtons::YesNo, MsgBoxIcon::Critical,
                   tr("ARE YOU SURE?")) == MsgBoxResult::Yes;
    }
    if (!ColumnSave::FieldInTemplates(fieldId))
        return true;
    app.MsgBox(tr("This column may not be deleted because it is currently in use in ") +
                   MsgBoxLineBreak +
                   tr("one or more templates.  It must be removed from the template(s)") +
                   MsgBoxLineBreak + tr("before it may be deleted from this document."),
               MsgBoxButtons::OKOnly, MsgBoxIcon::Critical, QString());
    return false;
}

} // namespace Orvane::mOrvane
