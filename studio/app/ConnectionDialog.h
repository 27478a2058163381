#pragma once

#include <QDialog>

class QLabel;
class QLineEdit;
class QPushButton;

namespace Orvane::Studio {

// Shown when a database cannot be opened: says why, and lets the user name another one.
class ConnectionDialog : public QDialog {
    Q_OBJECT

public:
    ConnectionDialog(const QString& connection, const QString& reason, QWidget* parent = nullptr);

    QString Connection() const;

    QLabel* lblReason = nullptr;
    QLineEdit* txtConnection = nullptr;
    QPushButton* cmdBrowse = nullptr;
    QPushButton* cmdOpen = nullptr;
    QPushButton* cmdQuit = nullptr;

private:
    void browse();
};

} // namespace Orvane::Studio
