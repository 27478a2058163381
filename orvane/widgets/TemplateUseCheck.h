#pragma once

#include <QtGlobal>

namespace Orvane::mOrvane {

// Whether the user may remove a column: the time-stamp column after the user confirms, any other
// column when no report template uses its field (the user is told why not).
bool TemplateUseCheck(bool isTimeStamp, qint32 fieldId);

} // namespace Orvane::mOrvane
