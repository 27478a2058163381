#pragma once

#include <QDialog>

class QTextBrowser;

namespace Orvane::Studio {

// The Studio's user guide: a page per window, read from the program's resources, with links
// between the pages. It stays open beside the window it explains.
class HelpBrowser : public QDialog {
    Q_OBJECT

public:
    explicit HelpBrowser(QWidget* parent = nullptr);

    // Shows the page for a window's help context: a document type's name, a dialog's name, or
    // anything else for the guide's first page.
    void ShowPage(const QString& helpContextName);
    // The file name of the page shown, e.g. "columns.html".
    QString PageShown() const;

private:
    QTextBrowser* txtHelp = nullptr;
};

} // namespace Orvane::Studio
