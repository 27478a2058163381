#include "studio/app/ConnectionDialog.h"

#include "studio/db/ConnectionDescription.h"

#include <QFileDialog>
#include <QGridLayout>
#include <QHBoxLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace Orvane::Studio {

ConnectionDialog::ConnectionDialog(const QString& connection, const QString& reason,
                                   QWidget* parent)
    : QDialog(parent) {
    setObjectName(QStringLiteral("ConnectionDialog"));
    setWindowTitle(tr("Orvane Studio: Open Database"));

    lblReason = new QLabel(reason);
    lblReason->setWordWrap(true);
    auto* hint = new QLabel(
        tr("Name a SQLite file (a new one is created with the demo dictionary), a PostgreSQL "
           "server as postgresql://user@host:port/database, or an ODBC data source as "
           "odbc:DSN. Type the password below, if the database needs one."));
    hint->setWordWrap(true);
    txtConnection = new QLineEdit(ConnectionDescription::WithoutPassword(connection));
    txtConnection->setObjectName(QStringLiteral("txtConnection"));
    txtPassword = new QLineEdit(ConnectionDescription::PasswordOf(connection));
    txtPassword->setObjectName(QStringLiteral("txtPassword"));
    txtPassword->setEchoMode(QLineEdit::Password);
    auto* lblPassword = new QLabel(tr("&Password:"));
    lblPassword->setBuddy(txtPassword);
    cmdBrowse = new QPushButton(tr("&Browse..."));
    cmdOpen = new QPushButton(tr("&Open"));
    cmdOpen->setDefault(true);
    cmdQuit = new QPushButton(tr("&Quit"));

    auto* grid = new QGridLayout(this);
    grid->addWidget(lblReason, 0, 0, 1, 2);
    grid->addWidget(hint, 1, 0, 1, 2);
    grid->addWidget(txtConnection, 2, 0);
    grid->addWidget(cmdBrowse, 2, 1);
    auto* buttons = new QHBoxLayout;
    buttons->addStretch();
    buttons->addWidget(cmdOpen);
    buttons->addWidget(cmdQuit);
    auto* password = new QHBoxLayout;
    password->addWidget(lblPassword);
    password->addWidget(txtPassword, 1);
    grid->addLayout(password, 3, 0);
    grid->addLayout(buttons, 4, 0, 1, 2);
    resize(560, sizeHint().height());

    connect(cmdBrowse, &QPushButton::clicked, this, &ConnectionDialog::browse);
    connect(cmdOpen, &QPushButton::clicked, this, &QDialog::accept);
    connect(cmdQuit, &QPushButton::clicked, this, &QDialog::reject);
}

QString ConnectionDialog::Connection() const {
    return ConnectionDescription::WithPassword(txtConnection->text().trimmed(),
                                               txtPassword->text());
}

void ConnectionDialog::browse() {
    const QString file =
        QFileDialog::getSaveFileName(this, tr("SQLite Database"), txtConnection->text(),
                                     tr("SQLite databases (*.sqlite *.db);;All files (*)"), nullptr,
                                     QFileDialog::DontConfirmOverwrite);
    if (!file.isEmpty())
        txtConnection->setText(file);
}

} // namespace Orvane::Studio
