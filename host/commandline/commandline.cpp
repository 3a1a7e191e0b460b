// SPDX-License-Identifier: MIT
#include "host/commandline/commandline.h"

#include <QCommandLineOption>
#include <QCommandLineParser>
#include <QRegularExpression>

namespace mirn::zelchip {

namespace {

const QString HelpName = QStringLiteral("help");
const QString VersionName = QStringLiteral("version");
const QString SnapshotName = QStringLiteral("snapshot");
const QString ScriptName = QStringLiteral("script");
const QString BatchName = QStringLiteral("batch");
const QString CheckName = QStringLiteral("check");
const QString SizeName = QStringLiteral("size");
const QString TakeOverName = QStringLiteral("take-over");
const QString FreshName = QStringLiteral("fresh");

// The window's parts do not fit into less than the smallest size, nor an image of more than the largest size into
// memory.
constexpr QSize SmallestWindow(640, 400);
constexpr QSize LargestWindow(16384, 16384);

CommandLine usageError(const QString& error)
{
    CommandLine result;
    result.task = CommandLine::Task::ReportError;
    result.error = error;
    return result;
}

// Returns an invalid size if the text is not "WIDTHxHEIGHT" within the limits.
QSize windowSizeOf(const QString& text)
{
    static const QRegularExpression Pattern(QStringLiteral("^(\\d{1,5})x(\\d{1,5})$"));
    const QRegularExpressionMatch match = Pattern.match(text);
    const QSize size(match.captured(1).toInt(), match.captured(2).toInt());
    const bool isWithinLimits = size.expandedTo(SmallestWindow) == size && size.boundedTo(LargestWindow) == size;
    return isWithinLimits ? size : QSize();
}

QString sizeError(const QString& text)
{
    return QStringLiteral("--size takes WIDTHxHEIGHT from %1x%2 to %3x%4, such as 1600x1000, not '%5'.")
        .arg(QString::number(SmallestWindow.width()), QString::number(SmallestWindow.height()),
            QString::number(LargestWindow.width()), QString::number(LargestWindow.height()), text);
}

void addOptions(QCommandLineParser& parser)
{
    parser.addOption(QCommandLineOption(QStringList{HelpName, QStringLiteral("h")}));
    parser.addOption(QCommandLineOption(VersionName));
    parser.addOption(QCommandLineOption(SnapshotName, QString(), QStringLiteral("FILE")));
    parser.addOption(QCommandLineOption(ScriptName, QString(), QStringLiteral("FILE")));
    parser.addOption(QCommandLineOption(BatchName, QString(), QStringLiteral("FILE")));
    parser.addOption(QCommandLineOption(CheckName));
    parser.addOption(QCommandLineOption(SizeName, QString(), QStringLiteral("SIZE")));
    parser.addOption(QCommandLineOption(TakeOverName));
    parser.addOption(QCommandLineOption(FreshName));
}

// Help and version take precedence over everything else.
CommandLine taskOf(const QCommandLineParser& parser)
{
    CommandLine result;
    if (parser.isSet(HelpName))
        result.task = CommandLine::Task::PrintHelp;
    else if (parser.isSet(VersionName))
        result.task = CommandLine::Task::PrintVersion;
    else if (parser.isSet(BatchName) || parser.isSet(CheckName))
        result.task = CommandLine::Task::RunBatch;
    else if (parser.isSet(SnapshotName))
        result.task = CommandLine::Task::SaveSnapshot;
    result.snapshotFile = parser.value(SnapshotName);
    result.checks = parser.isSet(CheckName);
    result.takesOver = parser.isSet(TakeOverName);
    result.isFresh = parser.isSet(FreshName);
    result.scriptFile = parser.value(parser.isSet(BatchName) ? BatchName : ScriptName);
    return result;
}

} // namespace

CommandLine parseCommandLine(const QStringList& arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    if (!parser.parse(arguments))
        return usageError(parser.errorText());
    CommandLine result = taskOf(parser);
    if (result.task == CommandLine::Task::SaveSnapshot && result.snapshotFile.isEmpty())
        return usageError(QStringLiteral("--snapshot takes the name of the image file to write."));
    const QString windowless = parser.isSet(BatchName) ? BatchName : parser.isSet(CheckName) ? CheckName : QString();
    if (!windowless.isEmpty() && (parser.isSet(SnapshotName) || parser.isSet(ScriptName)))
        return usageError(QStringLiteral("--%1 shows no window; --script and --snapshot need one.").arg(windowless));
    if ((parser.isSet(BatchName) || parser.isSet(ScriptName)) && result.scriptFile.isEmpty())
        return usageError(QStringLiteral("--script and --batch take the name of the Tcl file to run."));
    if (parser.isSet(SizeName)) {
        result.windowSize = windowSizeOf(parser.value(SizeName));
        if (result.windowSize.isEmpty())
            return usageError(sizeError(parser.value(SizeName)));
    }
    const QStringList paths = parser.positionalArguments();
    if (paths.size() > 1)
        return usageError(QStringLiteral("One project or drawing can be opened, not '%1' as well; "
                                         "the commands are import, export and place.")
                              .arg(paths.at(1)));
    if (paths.size() == 1 && paths.first().isEmpty())
        return usageError(QStringLiteral("The name of the project or drawing is empty."));
    result.path = paths.value(0);
    return result;
}

QString helpText(const QString& settingsFile)
{
    return QStringLiteral("Usage: zelchip [PROJECT_DIR | DRAWING.svg] [OPTION]...\n"
                          "       zelchip import -o PROJECT --sites SITES.csv [OPTION]...\n"
                          "       zelchip export PROJECT_DIR --template TEMPLATE [OPTION]...\n"
                          "       zelchip place PROJECT_DIR TABLE.csv [OPTION]...\n"
                          "\n"
                          "Shows the floorplan of a device and the resources of a design.\n"
                          "Without an argument it opens the sample project. \"export\" writes the placement\n"
                          "as constraints, and \"place\" sets it from a table; both have a --help.\n"
                          "\n"
                          "  PROJECT_DIR            a folder with a project.json\n"
                          "  DRAWING.svg            any SVG drawing; opens with an empty design\n"
                          "  import                 makes a project of tables; import --help says more\n"
                          "\n"
                          "  --script FILE.tcl      run a Tcl script in the window\n"
                          "  --batch FILE.tcl       run a Tcl script without a window and end\n"
                          "  --check                list the problems of the design, after the script\n"
                          "                         of a batch if there is one, and end\n"
                          "  --snapshot FILE.png    render the window into an image file and end;\n"
                          "                         needs no display\n"
                          "  --size WIDTHxHEIGHT    size of the window (as it was left, at first 1600x1000\n"
                          "                         or the screen's)\n"
                          "  --fresh                remember nothing: neither bring back the window as it was\n"
                          "                         left nor keep how this run leaves it\n"
                          "  --take-over            change a project whose lock is damaged or of another\n"
                          "                         machine; only when nobody there changes it any more\n"
                          "  --version              print the version and end\n"
                          "  -h, --help             print this help and end\n"
                          "\n"
                          "A window without a script remembers its size, place and docks, whether the\n"
                          "overview is on, the console's history, the last folder and the recent\n"
                          "projects in\n"
                          "  %1\n"
                          "\n"
                          "Exit status: 0 success, 1 something could not be opened or written or\n"
                          "the script of a batch failed or --check found an error, 2 unknown arguments.\n")
        .arg(settingsFile);
}

} // namespace mirn::zelchip
