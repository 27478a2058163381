#pragma once

class QCoreApplication;

namespace Orvane::Studio::StudioTranslations {

// Installs Qt's, the library's and the Studio's translations for the system locale. A folder
// named by ORVANE_TRANSLATIONS is searched first, then share/orvane/translations beside the
// program, then the catalogues built into it.
void Install(QCoreApplication& application);

} // namespace Orvane::Studio::StudioTranslations
