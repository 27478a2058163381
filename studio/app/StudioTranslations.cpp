#include "studio/app/StudioTranslations.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QTranslator>

namespace Orvane::Studio::StudioTranslations {

namespace {

QStringList folders() {
    QStringList found;
    const QString chosen = qEnvironmentVariable("ORVANE_TRANSLATIONS");
    if (!chosen.isEmpty())
        found << chosen;
    found << QCoreApplication::applicationDirPath() +
                 QStringLiteral("/../share/orvane/translations")
          << QStringLiteral(":/i18n");
    return found;
}

void load(QCoreApplication& application, const QString& catalogue, const QStringList& where) {
    auto* translator = new QTranslator(&application);
    for (const QString& folder : where) {
        if (translator->load(QLocale(), catalogue, QStringLiteral("_"), folder)) {
            QCoreApplication::installTranslator(translator);
            return;
        }
    }
    delete translator;
}

} // namespace

void Install(QCoreApplication& application) {
    load(application, QStringLiteral("qtbase"),
         {QLibraryInfo::path(QLibraryInfo::TranslationsPath)});
    const QStringList where = folders();
    load(application, QStringLiteral("orvane"), where);
    load(application, QStringLiteral("orvane_studio"), where);
}

} // namespace Orvane::Studio::StudioTranslations
