#include "tests/support/QtPrinters.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <gtest/gtest.h>

namespace Orvane::Testing {

namespace {

// The program beside this suite in the build tree.
QString studioProgram() {
    return QDir(QCoreApplication::applicationDirPath())
        .filePath(QStringLiteral("../studio/orvane-studio"));
}

struct ProgramRun {
    int status = -1;
    QByteArray out;
    QByteArray err;
};

// Runs the program as a user would where there is no display.
ProgramRun studio(const QStringList& arguments) {
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.remove(QStringLiteral("DISPLAY"));
    environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    environment.remove(QStringLiteral("QT_QPA_PLATFORM"));
    process.setProcessEnvironment(environment);
    process.start(studioProgram(), arguments);
    if (!process.waitForFinished(60000))
        return {};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput(), process.readAllStandardError()};
}

QMap<QString, QByteArray> filesIn(const QString& folder) {
    QMap<QString, QByteArray> files;
    for (const QString& name : QDir(folder).entryList(QDir::Files)) {
        QFile file(QDir(folder).filePath(name));
        file.open(QIODevice::ReadOnly);
        files.insert(name, file.readAll());
    }
    return files;
}

} // namespace

TEST(CommandLineTest, ExportsAllImportsIntoAnotherDatabaseAndSaysHowItWent) {
    ASSERT_TRUE(QFile::exists(studioProgram())) << studioProgram().toStdString();
    QTemporaryDir folder;
    const QString first = folder.filePath(QStringLiteral("first.db"));
    const QString second = folder.filePath(QStringLiteral("second.db"));
    const QString exported = folder.filePath(QStringLiteral("exported"));
    const QString again = folder.filePath(QStringLiteral("again"));
    const QString broken = folder.filePath(QStringLiteral("broken.json"));
    QFile(broken).open(QIODevice::WriteOnly);

    const ProgramRun help = studio({QStringLiteral("--help")});
    EXPECT_EQ(help.status, 0);
    EXPECT_TRUE(help.out.contains("import FILE... [--replace]")) << help.out.constData();

    const ProgramRun list = studio({QStringLiteral("--database"), first, QStringLiteral("list")});
    EXPECT_EQ(list.status, 0) << list.err.constData();
    EXPECT_TRUE(list.out.contains("Cell Traffic Feed\tASCII Data Source\tCell"));

    const ProgramRun one = studio({QStringLiteral("--database"), first, QStringLiteral("export"),
                                   QStringLiteral("trunk group export")});
    EXPECT_EQ(one.status, 0);
    EXPECT_TRUE(one.out.contains("\"table\": \"TG_COUNTERS\""));

    ASSERT_EQ(studio({QStringLiteral("--database"), first, QStringLiteral("export"),
                      QStringLiteral("--all"), exported})
                  .status,
              0);
    const QStringList files = QDir(exported).entryList({QStringLiteral("*.json")});
    ASSERT_EQ(files.size(), 2);
    QStringList importArguments{QStringLiteral("--database"), second, QStringLiteral("import")};
    for (const QString& name : files)
        importArguments << QDir(exported).filePath(name);

    const struct {
        const char* what;
        QStringList arguments;
        int status;
        const char* message;
    } cases[] = {
        {"unknown data source",
         {QStringLiteral("--database"), first, QStringLiteral("export"), QStringLiteral("Nope")},
         1,
         "There is no data source named \"Nope\"."},
        {"unknown command",
         {QStringLiteral("--database"), first, QStringLiteral("drop")},
         1,
         "Unknown command"},
        {"names taken without --replace", importArguments, 1, "exists already"},
        {"a file that is no JSON",
         {QStringLiteral("--database"), second, QStringLiteral("import"), broken},
         1,
         "broken.json: not JSON"},
        {"a server that is not there",
         {QStringLiteral("--database"), QStringLiteral("postgresql://nobody@127.0.0.1:1/none"),
          QStringLiteral("list")},
         2,
         "Database error"},
        {"replacing", importArguments + QStringList{QStringLiteral("--replace")}, 0, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.what);
        const ProgramRun run = studio(c.arguments);
        EXPECT_EQ(run.status, c.status) << run.err.constData();
        EXPECT_TRUE(run.err.contains(c.message)) << run.err.constData();
    }

    ASSERT_EQ(studio({QStringLiteral("--database"), second, QStringLiteral("export"),
                      QStringLiteral("--all"), again})
                  .status,
              0);
    EXPECT_EQ(filesIn(again), filesIn(exported));
}

// The demo's "Cell Traffic Feed" against files made here: a fitting one, one with a renamed
// column, and the commands that cannot check.
TEST(CommandLineTest, CheckComparesADataSourceWithItsFile) {
    QTemporaryDir folder;
    const QString db = folder.filePath(QStringLiteral("check.db"));
    const QString csv = folder.filePath(QStringLiteral("cells.csv"));
    const auto check = [&](const QByteArray& header, const QString& name) {
        QFile file(csv);
        file.open(QIODevice::WriteOnly);
        file.write(header + "\n2024-01-31 10:00,A1,3,north\n");
        file.close();
        return studio({"--database", db, "check", name, csv});
    };
    const ProgramRun fits = check("When,cell,HO_ATTEMPTS,COMMENT", "Cell Traffic Feed");
    EXPECT_EQ(fits.status, 0) << fits.err.toStdString();
    EXPECT_TRUE(fits.out.contains("matches its definition"));
    const ProgramRun renamed = check("When,CELL,Attempts,COMMENT", "cell traffic feed");
    EXPECT_EQ(renamed.status, 3);
    EXPECT_EQ(renamed.out, "Column \"HO_ATTEMPTS\" is at position 3, where the file's header "
                           "has \"Attempts\".\n");
    EXPECT_EQ(check("x", "Trunk Group Export").status, 1);
    EXPECT_EQ(check("x", "Nothing").status, 1);
}

} // namespace Orvane::Testing
