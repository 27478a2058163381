#pragma once

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QStringList>

namespace Orvane::Studio {

class DefinitionTransfer;

// The program's arguments: either the window's options, or one of the commands that run
// without a window or a display (list, export, import) and end with an exit status.
class CommandLine {
public:
    enum ExitStatus { Success = 0, UserError = 1, DatabaseError = 2 };

    explicit CommandLine(const QStringList& arguments);

    // True for a command, for --help and for arguments that cannot be parsed: Run answers them.
    bool IsCommand() const;
    // Needs a QCoreApplication; creates no widget.
    int Run();

    QString Database() const;
    bool ReadOnly() const { return m_parser.isSet(m_readOnly); }
    QString OpenName() const { return m_parser.value(m_open); }
    // The demo database in the user's data folder.
    static QString DefaultDatabase();

private:
    int runOn(DefinitionTransfer& transfer, const QString& command, const QStringList& words);
    int list(DefinitionTransfer& transfer);
    int exportOne(DefinitionTransfer& transfer, const QStringList& words);
    int exportAll(DefinitionTransfer& transfer, const QStringList& words);
    int import(DefinitionTransfer& transfer, const QStringList& files);
    int userError(const QString& message) const;

    QCommandLineParser m_parser;
    QCommandLineOption m_database;
    QCommandLineOption m_readOnly;
    QCommandLineOption m_open;
    QCommandLineOption m_all;
    QCommandLineOption m_replace;
    QCommandLineOption m_help;
    bool m_parsed = false;
};

} // namespace Orvane::Studio
