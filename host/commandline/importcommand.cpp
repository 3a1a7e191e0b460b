// SPDX-License-Identifier: MIT
#include "host/commandline/importcommand.h"

#include "host/commandline/standardstreams.h"
#include "importer/optiontexts.h"
#include "importer/tableimport.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

#include <unistd.h>

#include <chrono>
#include <csignal>
#include <cstdlib>
#include <future>

namespace mirn::zelchip {

namespace {

using zelimporter::ImportOptions;
using zelimporter::TableImport;

constexpr int ProgressMilliseconds = 200;

volatile std::sig_atomic_t isInterrupted = 0;

void interrupt(int)
{
    isInterrupted = 1;
}

struct TextOption
{
    const char* name;
    const char* value;
    QString (*read)(const QString& text, ImportOptions& options);
};

template <QString ImportOptions::*Member> QString take(const QString& text, ImportOptions& options)
{
    options.*Member = text;
    return {};
}

const std::vector<TextOption>& textOptions()
{
    static const std::vector<TextOption> Options{
        {"output", "PROJECT", take<&ImportOptions::project>},
        {"sites", "FILE", take<&ImportOptions::sites>},
        {"resources", "FILE", take<&ImportOptions::resources>},
        {"connections", "FILE", take<&ImportOptions::connections>},
        {"name", "NAME", take<&ImportOptions::name>},
        {"columns", "ROLE=COLUMN,...", zelimporter::readColumnOption},
        {"separator", "CHARACTER", zelimporter::readSeparatorOption},
        {"unit", "UNIT", zelimporter::readUnitOption},
        {"y", "DIRECTION", zelimporter::readAxisOption},
    };
    return Options;
}

void addImportOptions(QCommandLineParser& parser)
{
    for (const TextOption& option : textOptions()) {
        QStringList names{QString::fromLatin1(option.name)};
        if (names.first() == QLatin1String("output"))
            names.append(QStringLiteral("o"));
        parser.addOption(QCommandLineOption(names, QString(), QString::fromLatin1(option.value)));
    }
    parser.addOption(QCommandLineOption(QStringLiteral("replace")));
    parser.addOption(QCommandLineOption(QStringList{QStringLiteral("help"), QStringLiteral("h")}));
}

QString missingArgument(const ImportOptions& options)
{
    if (options.project.isEmpty())
        return QStringLiteral("import takes the folder to make, as in -o PROJECT.");
    if (options.sites.isEmpty())
        return QStringLiteral("import takes the table of the sites, as in --sites SITES.csv.");
    if (!options.connections.isEmpty() && options.resources.isEmpty())
        return QStringLiteral("--connections connect resources; give their table as well, as in --resources FILE.");
    return {};
}

void say(const QString& text)
{
    writeToStream(QStringLiteral("zelchip: %1\n").arg(text), TclInterpreter::Channel::Error);
}

// The share is shown to people only, who see one line that changes.
TableImport::Result runWatched(TableImport& import)
{
    std::future<TableImport::Result> result = std::async(std::launch::async, [&import] { return import.run(); });
    const bool isWatched = ::isatty(STDERR_FILENO) == 1;
    while (result.wait_for(std::chrono::milliseconds(ProgressMilliseconds)) != std::future_status::ready) {
        if (isInterrupted)
            import.cancel();
        if (isWatched)
            writeToStream(QStringLiteral("\rImporting: %1 %").arg(static_cast<int>(100 * import.progress())),
                TclInterpreter::Channel::Error);
    }
    if (isWatched)
        writeToStream(QStringLiteral("\r\033[K"), TclInterpreter::Channel::Error);
    return result.get();
}

} // namespace

ImportCommand parseImportCommand(const QStringList& arguments)
{
    ImportCommand command;
    QCommandLineParser parser;
    addImportOptions(parser);
    if (!parser.parse(QStringList(QStringLiteral("import")) + arguments)) {
        command.error = parser.errorText();
        return command;
    }
    command.printsHelp = parser.isSet(QStringLiteral("help"));
    command.options.replaces = parser.isSet(QStringLiteral("replace"));
    for (const TextOption& option : textOptions()) {
        const QStringList values = parser.values(QString::fromLatin1(option.name));
        for (const QString& value : values) {
            if (command.error.isEmpty())
                command.error = option.read(value, command.options);
        }
    }
    if (command.error.isEmpty() && !parser.positionalArguments().isEmpty())
        command.error = QStringLiteral("import takes no argument '%1' without an option.")
                            .arg(parser.positionalArguments().first());
    if (command.error.isEmpty())
        command.error = missingArgument(command.options);
    return command;
}

QString importHelpText()
{
    return QStringLiteral("Usage: zelchip import -o PROJECT --sites SITES.csv [OPTION]...\n"
                          "\n"
                          "Makes a project of tables: drawing, device, design and filter file.\n"
                          "\n"
                          "  -o, --output PROJECT   the folder to make\n"
                          "  --sites FILE           the sites: name,kind,x,y,width,height, and if you like\n"
                          "                         parent,layer,group,neighbours,reaches,tooltip; other\n"
                          "                         columns become attributes\n"
                          "  --resources FILE       the resources: name,kind, and if you like parent,site,\n"
                          "                         fixed\n"
                          "  --connections FILE     what connects them: from,to, and if you like rule\n"
                          "                         (same-unit, reachable or near)\n"
                          "\n"
                          "  --name NAME            of the device (the folder's)\n"
                          "  --columns ROLE=COLUMN,...  columns with other names, such as width=W or\n"
                          "                         resources.name=NET\n"
                          "  --separator C          the character between values, or \"tab\" (of , ; tab and |\n"
                          "                         the one that the header shows)\n"
                          "  --unit NAME[/SCALE]    the unit of the coordinates, where no column has one in\n"
                          "                         brackets, and the drawing units for one of it (what\n"
                          "                         suits the sites)\n"
                          "  --y up|down            where y grows to (down)\n"
                          "  --replace              replace the project that is there; it is kept beside the\n"
                          "                         new one\n"
                          "  -h, --help             print this help and end\n"
                          "\n"
                          "Exit status: 0 success, 1 a table is wrong or something could not be written,\n"
                          "2 unknown arguments. If anything goes wrong, what was there stays as it was.\n");
}

int runImport(const ImportOptions& options)
{
    isInterrupted = 0;
    std::signal(SIGINT, interrupt);
    std::signal(SIGTERM, interrupt);
    TableImport import(options);
    const TableImport::Result result = runWatched(import);
    for (const QString& warning : result.warnings)
        say(QStringLiteral("warning: %1").arg(warning));
    if (result.isCancelled)
        say(QStringLiteral("The import was cancelled; nothing was made."));
    else
        say(result.error.isEmpty() ? result.summary : result.error);
    return result.error.isEmpty() && !result.isCancelled ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace mirn::zelchip
