#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QStringList>

namespace Orvane::Studio {

class DefinitionTransfer;

// The program's arguments: either the window's options, or one of the commands that run
// without a window or a display (list, export, import, check) and end with an exit status.
class CommandLine {
public:
    enum ExitStatus { Success = 0, UserError = 1, DatabaseError = 2, Differences = 3 };

    explicit CommandLine(const QStringList& arguments);

    // Arguments that cannot be parsed may hold the window system's own options (-platform),
    // which only a QApplication takes out; Run reports the rest.
    bool Parsed() const { return m_parsed; }
    // A command or --help, even among arguments that cannot be parsed: Run answers them.
    bool IsCommand() const;
    // Needs a QCoreApplication; creates no widget.
    int Run() const;

    QString Database() const;
    // True when --database was given; otherwise the window opens the database of last time.
    bool NamesDatabase() const { return m_parser.isSet(m_database); }
    bool ReadOnly() const { return m_parser.isSet(m_readOnly); }
    QString OpenName() const { return m_parser.value(m_open); }
    // The demo database in the user's data folder.
    static QString DefaultDatabase();

private:
    int runOn(DefinitionTransfer& transfer, const QString& command, const QStringList& words) const;
    int list(DefinitionTransfer& transfer) const;
    int exportOne(DefinitionTransfer& transfer, const QStringList& words) const;
    int exportAll(DefinitionTransfer& transfer, const QStringList& words) const;
    int import(DefinitionTransfer& transfer, const QStringList& files) const;
    int check(DefinitionTransfer& transfer, const QStringList& words) const;
    int userError(const QString& message) const;

    QCommandLineParser m_parser;
    QCommandLineOption m_database;
    QCommandLineOption m_readOnly;
    QCommandLineOption m_open;
    QCommandLineOption m_all;
    QCommandLineOption m_replace;
    QCommandLineOption m_help;
    QStringList m_arguments;
    bool m_parsed = false;
};

} // namespace Orvane::Studio
