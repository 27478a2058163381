#include "studio/app/HelpBrowser.h"

#include <QDialogButtonBox>
#include <QFileInfo>
#include <QHash>
#include <QTextBrowser>
#include <QVBoxLayout>

// Resources of a static library must be registered by name.
static void initHelpResources() {
    Q_INIT_RESOURCE(orvane_help);
}

namespace Orvane::Studio {

namespace {

QString pageFor(const QString& helpContextName) {
    static const QHash<QString, QString> pages{
        {QStringLiteral("ASCII Data Source"), QStringLiteral("ascii.html")},
        {QStringLiteral("ODBC Data Source"), QStringLiteral("odbc.html")},
        {QStringLiteral("XDataSourcesColumn"), QStringLiteral("columns.html")},
        {QStringLiteral("fFieldInfo"), QStringLiteral("field-editor.html")},
    };
    return pages.value(helpContextName, QStringLiteral("index.html"));
}

} // namespace

HelpBrowser::HelpBrowser(QWidget* parent)
    : QDialog(parent) {
    initHelpResources();
    setObjectName(QStringLiteral("HelpBrowser"));
    setWindowTitle(tr("Orvane Studio Help"));
    txtHelp = new QTextBrowser(this);
    txtHelp->setObjectName(QStringLiteral("txtHelp"));
    txtHelp->setSearchPaths({QStringLiteral(":/help")});
    auto* buttons = new QDialogButtonBox(QDialogButtonBox::Close, this);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::close);
    auto* page = new QVBoxLayout(this);
    page->addWidget(txtHelp);
    page->addWidget(buttons);
    resize(560, 480);
}

void HelpBrowser::ShowPage(const QString& helpContextName) {
    txtHelp->setSource(QUrl(QStringLiteral("qrc:/help/") + pageFor(helpContextName)));
}

QString HelpBrowser::PageShown() const {
    return QFileInfo(txtHelp->source().path()).fileName();
}

} // namespace Orvane::Studio
