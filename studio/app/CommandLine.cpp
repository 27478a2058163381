#include "studio/app/CommandLine.h"

#include "orvane/host/HostRegistry.h"
#include "orvane/host/IDocumentType.h"
#include "orvane/host/OrvaneError.h"
#include "orvane/model/CDataSourcesData.h"
#include "orvane/sources/DefinitionCheck.h"
#include "studio/app/ConsoleApplication.h"
#include "studio/app/DefinitionTransfer.h"
#include "studio/app/StudioDocumentType.h"
#include "studio/db/SqlQueryService.h"
#include "studio/dictionary/DictionaryService.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QRegularExpression>
#include <QSet>
#include <QStandardPaths>
#include <cstdio>

namespace Orvane::Studio {

namespace {

// The texts of this file, in one translation context.
struct Texts {
    Q_DECLARE_TR_FUNCTIONS(Orvane::Studio::CommandLine)
};

const QStringList Commands{QStringLiteral("list"), QStringLiteral("export"),
                           QStringLiteral("import"), QStringLiteral("check")};

const char* const Description = QT_TRANSLATE_NOOP(
    "Orvane::Studio::CommandLine",
    "Orvane Studio: define External Data Sources for the performance-management client.\n"
    "\n"
    "Without a command it opens its window. The commands run without a window or a display:\n"
    "  list                       the data sources: name, type, entity\n"
    "  export NAME [FILE]         one data source as JSON, to FILE or to the standard output\n"
    "  export --all DIR           every data source, one NAME.json each, into DIR\n"
    "  import FILE... [--replace] create the data sources of the files, all or none; with\n"
    "                             --replace a data source of the same name is replaced\n"
    "  check NAME [FILE]          an ASCII data source's columns against its data file (or\n"
    "                             FILE): each difference on a line\n"
    "Exit status: 0 success, 1 a problem with the command or the files (said on the standard\n"
    "error), 2 a database error, 3 the checked file differs from its definition.");

void write(std::FILE* stream, const QString& text) {
    const QByteArray bytes = text.toUtf8() + '\n';
    std::fwrite(bytes.constData(), 1, static_cast<size_t>(bytes.size()), stream);
}

// A data source's name as a file name: anything but letters, digits, blank, dot, - and _ goes.
// Two names that come out the same (in any case) are told apart by a number.
QString fileNameOf(const QString& name, QSet<QString>& used) {
    static const QRegularExpression unsafe(QStringLiteral("[^A-Za-z0-9 ._-]"));
    const QString base = QString(name).replace(unsafe, QStringLiteral("_"));
    QString fileName = base + QStringLiteral(".json");
    for (int n = 2; used.contains(fileName.toLower()); ++n)
        fileName = QStringLiteral("%1 %2.json").arg(base).arg(n);
    used.insert(fileName.toLower());
    return fileName;
}

bool writeFile(const QString& path, const QByteArray& text) {
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate) &&
           file.write(text) == text.size() && file.flush();
}

} // namespace

CommandLine::CommandLine(const QStringList& arguments)
    : m_database(QStringLiteral("database"),
                 Texts::tr("A SQLite file, postgresql://user@host:port/database (the password "
                           "from PGPASSWORD or ~/.pgpass), or odbc:DSN (default: the demo "
                           "database in the user's data folder)."),
                 QStringLiteral("connection"))
    , m_readOnly(QStringLiteral("read-only"),
                 Texts::tr("Window: open every document without edit permission."))
    , m_open(QStringLiteral("open"), Texts::tr("Window: open the data source of that name."),
             QStringLiteral("name"))
    , m_all(QStringLiteral("all"), Texts::tr("export: every data source, into a folder."))
    , m_replace(QStringLiteral("replace"),
                Texts::tr("import: replace a data source of the same name."))
    , m_help({QStringLiteral("h"), QStringLiteral("help")}, Texts::tr("Show this help.")) {
    m_parser.setApplicationDescription(Texts::tr(Description));
    m_parser.addOptions({m_database, m_readOnly, m_open, m_all, m_replace, m_help});
    m_parser.addPositionalArgument(QStringLiteral("command"),
                                   Texts::tr("list, export, import or check, and its arguments."),
                                   QStringLiteral("[command [arguments...]]"));
    m_parsed = m_parser.parse(arguments);
    m_arguments = arguments.mid(1);
}

bool CommandLine::IsCommand() const {
    if (!m_parsed) {
        // Reported as a command's error where there may be no display to open a window on.
        return std::any_of(m_arguments.cbegin(), m_arguments.cend(), [](const QString& word) {
            return Commands.contains(word) || word == QLatin1String("--help");
        });
    }
    return m_parser.isSet(m_help) || !m_parser.positionalArguments().isEmpty();
}

QString CommandLine::DefaultDatabase() {
    const QString folder = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QDir().mkpath(folder);
    return QDir(folder).filePath(QStringLiteral("orvane-studio.sqlite"));
}

QString CommandLine::Database() const {
    return m_parser.isSet(m_database) ? m_parser.value(m_database) : DefaultDatabase();
}

int CommandLine::userError(const QString& message) const {
    write(stderr, message);
    return UserError;
}

int CommandLine::Run() const {
    if (!m_parsed)
        return userError(m_parser.errorText() + Texts::tr("\nSee --help."));
    if (m_parser.isSet(m_help)) {
        write(stdout, m_parser.helpText());
        return Success;
    }
    QStringList words = m_parser.positionalArguments();
    const QString command = words.takeFirst();
    if (!Commands.contains(command))
        return userError(Texts::tr("Unknown command \"%1\". See --help.").arg(command));
    try {
        const auto database = std::make_shared<SqlQueryService>(Database());
        const auto dictionary = std::make_shared<DictionaryService>(*database);
        HostRegistry::Install({database, dictionary, std::make_shared<ConsoleApplication>(), {}});
        DefinitionTransfer transfer(*database);
        const int status = runOn(transfer, command, words);
        HostRegistry::Uninstall();
        return status;
    } catch (const Error& error) {
        HostRegistry::Uninstall();
        write(stderr, Texts::tr("Database error: ") + error.message());
        return DatabaseError;
    }
}

int CommandLine::runOn(DefinitionTransfer& transfer, const QString& command,
                       const QStringList& words) const {
    if (command == QLatin1String("list"))
        return words.isEmpty() ? list(transfer) : userError(Texts::tr("list takes nothing."));
    if (command == QLatin1String("export"))
        return m_parser.isSet(m_all) ? exportAll(transfer, words) : exportOne(transfer, words);
    if (command == QLatin1String("check"))
        return check(transfer, words);
    return import(transfer, words);
}

int CommandLine::list(DefinitionTransfer& transfer) const {
    for (const DocumentSummary& document : transfer.List())
        write(stdout, document.name + QLatin1Char('\t') + document.typeName + QLatin1Char('\t') +
                          document.entityName);
    return Success;
}

int CommandLine::exportOne(DefinitionTransfer& transfer, const QStringList& words) const {
    if (words.isEmpty() || words.size() > 2)
        return userError(Texts::tr("Usage: export NAME [FILE], or export --all DIR."));
    const auto document = transfer.Find(words.first());
    if (!document)
        return userError(Texts::tr("There is no data source named \"%1\".").arg(words.first()));
    const QByteArray text = transfer.Export(document->id);
    if (words.size() == 1) {
        std::fwrite(text.constData(), 1, static_cast<size_t>(text.size()), stdout);
        return Success;
    }
    if (!writeFile(words.at(1), text))
        return userError(Texts::tr("Cannot write %1.").arg(words.at(1)));
    return Success;
}

int CommandLine::exportAll(DefinitionTransfer& transfer, const QStringList& words) const {
    if (words.size() != 1)
        return userError(Texts::tr("Usage: export --all DIR."));
    const QDir folder(words.first());
    if (!QDir().mkpath(folder.path()))
        return userError(Texts::tr("Cannot create the folder %1.").arg(folder.path()));
    QSet<QString> used;
    for (const DocumentSummary& document : transfer.List()) {
        const QString path = folder.filePath(fileNameOf(document.name, used));
        if (!writeFile(path, transfer.Export(document.id)))
            return userError(Texts::tr("Cannot write %1.").arg(path));
        write(stdout, path);
    }
    return Success;
}

int CommandLine::check(DefinitionTransfer& transfer, const QStringList& words) const {
    if (words.isEmpty() || words.size() > 2)
        return userError(Texts::tr("Usage: check NAME [FILE]."));
    const auto summary = transfer.Find(words.first());
    if (!summary)
        return userError(Texts::tr("There is no data source named \"%1\".").arg(words.first()));
    const auto document = transfer.Load(summary->id);
    if (document->DocumentType()->TypeName() != StudioDocumentType::Ascii()->TypeName())
        return userError(Texts::tr("check reads the files of ASCII data sources only."));
    const QString file = words.size() == 2 ? words.at(1) : document->FileName();
    const QStringList differences =
        DefinitionCheck::Check(*document->Columns(), file, document->Delimeter());
    for (const QString& difference : differences)
        write(stdout, difference);
    if (differences.isEmpty())
        write(stdout, Texts::tr("%1 matches its definition.").arg(file));
    return differences.isEmpty() ? Success : Differences;
}

int CommandLine::import(DefinitionTransfer& transfer, const QStringList& files) const {
    if (files.isEmpty())
        return userError(Texts::tr("Usage: import FILE... [--replace]."));
    QList<ImportInput> inputs;
    for (const QString& path : files) {
        QFile file(path);
        if (!file.open(QIODevice::ReadOnly))
            return userError(Texts::tr("Cannot read %1: %2").arg(path, file.errorString()));
        inputs.append({path, file.readAll()});
    }
    const ImportOutcome outcome = transfer.Import(inputs, m_parser.isSet(m_replace));
    if (!outcome.Succeeded()) {
        for (const QString& problem : outcome.problems)
            write(stderr, problem);
        write(stderr, outcome.nameTaken
                          ? Texts::tr("Nothing was imported; --replace replaces those.")
                          : Texts::tr("Nothing was imported."));
        return UserError;
    }
    for (const QString& name : outcome.imported)
        write(stdout, Texts::tr("Imported \"%1\".").arg(name));
    return Success;
}

} // namespace Orvane::Studio
