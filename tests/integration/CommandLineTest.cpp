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
    return QDir(QCoreApplication::applicationDirPath()).filePath("../studio/orvane-studio");
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
    environment.remove("DISPLAY");
    environment.remove("WAYLAND_DISPLAY");
    environment.remove("QT_QPA_PLATFORM");
    process.setProcessEnvironment(environment);
    process.start(studioProgram(), arguments);
    if (!process.waitForFinished(60000))
        return {};
    return {process.exitStatus() == QProcess::NormalExit ? process.exitCode() : -1,
            process.readAllStandardOutput(), process.readAllStandardError()};
}

} // namespace

TEST(CommandLineTest, ExportsImportsAndSaysHowItWent) {
    ASSERT_TRUE(QFile::exists(studioProgram())) << studioProgram().toStdString();
    QTemporaryDir folder;
    const QString first = folder.filePath("first.db");
    const QString second = folder.filePath("second.db");
    const QString exported = folder.filePath("exported");
    const QString broken = folder.filePath("broken.json");
    QFile(broken).open(QIODevice::WriteOnly);

    ASSERT_EQ(studio({"--database", first, "export", "--all", exported}).status, 0);
    const QStringList files = QDir(exported).entryList({"*.json"});
    ASSERT_EQ(files.size(), 2);
    QStringList importArguments{"--database", second, "import"};
    for (const QString& name : files)
        importArguments << QDir(exported).filePath(name);

    const struct {
        QStringList arguments;
        int status;
        const char* out;
        const char* err = "";
    } cases[] = {
        {{"--help"}, 0, "import FILE... [--replace]"},
        {{"--database", first, "list"}, 0, "Cell Traffic Feed\tASCII Data Source\tCell"},
        {{"--database", first, "export", "trunk group export"}, 0, "\"table\": \"TG_COUNTERS\""},
        {{"--database", first, "export", "Nope"}, 1, "", "There is no data source named \"Nope\"."},
        {{"--database", first, "drop"}, 1, "", "Unknown command"},
        {importArguments, 1, "", "exists already"},
        {{"--database", second, "import", broken}, 1, "", "broken.json: not JSON"},
        {{"--database", "postgresql://nobody@127.0.0.1:1/none", "list"}, 2, "", "Database error"},
        {importArguments + QStringList{"--replace"}, 0, ""},
    };
    for (const auto& c : cases) {
        SCOPED_TRACE(c.arguments.join(' ').toStdString());
        const ProgramRun run = studio(c.arguments);
        EXPECT_EQ(run.status, c.status) << run.err.constData();
        EXPECT_TRUE(run.out.contains(c.out)) << run.out.constData();
        EXPECT_TRUE(run.err.contains(c.err)) << run.err.constData();
    }
}

// The demo's "Cell Traffic Feed" against files made here: a fitting one, one with a renamed
// column, and the commands that cannot check.
TEST(CommandLineTest, CheckComparesADataSourceWithItsFile) {
    QTemporaryDir folder;
    const QString db = folder.filePath("check.db");
    const QString csv = folder.filePath("cells.csv");
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
