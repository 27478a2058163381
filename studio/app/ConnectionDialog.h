#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace Orvane::Studio {

// Shown when a database cannot be opened: says why, and lets the user name another one. The
// password is never in the connection box: it has a masked box of its own.
class ConnectionDialog : public QDialog {
    Q_OBJECT

public:
    ConnectionDialog(const QString& connection, const QString& reason, QWidget* parent = nullptr);

    // The connection text with the password of the password box in it.
    QString Connection() const;

    QLabel* lblReason = nullptr;
    QLineEdit* txtConnection = nullptr;
    QLineEdit* txtPassword = nullptr;
    QPushButton* cmdBrowse = nullptr;
    QPushButton* cmdOpen = nullptr;
    QPushButton* cmdQuit = nullptr;

private:
    void browse();
};

} // namespace Orvane::Studio
