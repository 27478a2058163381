#include "orvane/host/OrvaneError.h"
#include "studio/app/CommandLine.h"
#include "studio/app/ConnectionDialog.h"
#include "studio/app/MainWindow.h"
#include "studio/app/StudioApplication.h"
#include "studio/app/StudioHost.h"
#include "studio/app/StudioTranslations.h"
#include "studio/db/ConnectionDescription.h"
#include "studio/db/SqlQueryService.h"

#include <QApplication>
#include <QCoreApplication>
#include <QMessageBox>
#include <QSettings>
#include <QStatusBar>
#include <cstdio>

using namespace Orvane;
using namespace Orvane::Studio;

namespace {

// A database that holds other tables is only set up when the user says so.
bool askToSetUp(const QString& question) {
    return QMessageBox::question(nullptr, QApplication::applicationName(), question,
                                 QMessageBox::Yes | QMessageBox::No,
                                 QMessageBox::No) == QMessageBox::Yes;
}

// Opens the database, asking for another one as long as it cannot be opened; null when the
// user gives up. The connection text ends as the one that opened.
std::shared_ptr<SqlQueryService> openDatabase(QString& connection) {
    for (;;) {
        try {
            return std::make_shared<SqlQueryService>(connection, SchemaForm::WithEditorPosition,
                                                     askToSetUp);
        } catch (const Error& error) {
            ConnectionDialog dialog(connection, error.message());
            if (dialog.exec() != QDialog::Accepted || dialog.Connection().isEmpty())
                return nullptr;
            connection = dialog.Connection();
        }
    }
}

} // namespace

int main(int argc, char** argv) {
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments << QString::fromLocal8Bit(argv[i]);
    if (const CommandLine command(arguments); command.IsCommand()) {
        // A command runs where there is no display: no QApplication, no widget.
        QCoreApplication application(argc, argv);
        QCoreApplication::setApplicationName(QStringLiteral("Orvane Studio"));
        QCoreApplication::setOrganizationName(QStringLiteral("Orvane"));
        StudioTranslations::Install(application);
        return command.Run();
    }

    QApplication application(argc, argv);
    QApplication::setApplicationName(QStringLiteral("Orvane Studio"));
    QApplication::setOrganizationName(QStringLiteral("Orvane"));
    StudioTranslations::Install(application);
    // Read again without the window system's options, which QApplication took out.
    const CommandLine commandLine(QApplication::arguments());
    if (!commandLine.Parsed() || commandLine.IsCommand())
        return commandLine.Run();

    // The database of last time is kept without its password: the dialog, PGPASSWORD or
    // ~/.pgpass supply it.
    QSettings session;
    QString connection =
        commandLine.NamesDatabase()
            ? commandLine.Database()
            : session.value(MainWindow::LastDatabaseKey, commandLine.Database()).toString();
    const auto db = openDatabase(connection);
    if (!db)
        return 1;
    session.setValue(MainWindow::LastDatabaseKey,
                     ConnectionDescription::WithoutPassword(connection));
    if (db->SetUpOnOpen())
        std::printf("%s\n", qPrintable(QCoreApplication::translate(
                                           "main", "Orvane Studio created its demo database: %1")
                                           .arg(db->DatabaseShown())));

    StudioHost host(db, !commandLine.ReadOnly());
    MainWindow window(db);
    host.Application().setMainWindow(&window);
    window.SetDatabaseSwitch(
        [&host](const std::shared_ptr<SqlQueryService>& database) { host.Use(database); });
    if (db->SetUpOnOpen())
        window.statusBar()->showMessage(
            QCoreApplication::translate("main", "Created the demo database: %1")
                .arg(db->DatabaseShown()));
    window.RestoreSession(session);
    window.show();
    const QString openName = commandLine.OpenName();
    if (!openName.isEmpty() && !window.OpenDocumentNamed(openName))
        window.statusBar()->showMessage(
            QCoreApplication::translate("main", "There is no data source named \"%1\".")
                .arg(openName));
    return application.exec();
}
