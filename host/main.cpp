// SPDX-License-Identifier: MIT
#include "host/commandline/batch.h"
#include "host/commandline/commandline.h"
#include "host/commandline/constraintcommand.h"
#include "host/commandline/importcommand.h"
#include "host/commandline/standardstreams.h"
#include "host/look/theme.h"
#include "host/memory/windowmemory.h"
#include "host/memory/windowsettings.h"
#include "host/project/projectsession.h"
#include "host/project/sampleproject.h"
#include "host/widgets/loadprogress.h"
#include "host/window/mainwindow.h"
#include "host/window/windowarrival.h"

#include <QApplication>
#include <QFile>
#include <QStandardPaths>

#include <clocale>
#include <csignal>
#include <cstring>

#include <langinfo.h>

#include <optional>

using namespace mirn::zelchip;

namespace {

constexpr int Failure = 1;
constexpr int UsageError = 2;
constexpr QSize SnapshotSize(1600, 1000); // device-independent pixels

const char SamplePath[] = "/" ZELCHIP_DATA_FOLDER "/sample"; // relative to the program's folder

void say(const QString& message)
{
    writeToStream(QStringLiteral("zelchip: %1\n").arg(message), TclInterpreter::Channel::Error);
}

void print(const QString& text)
{
    writeToStream(text, TclInterpreter::Channel::Output);
}

int fail(int status, const QString& error)
{
    say(error);
    return status;
}

QStringList argumentList(int argc, char** argv)
{
    QStringList arguments;
    for (int i = 0; i < argc; ++i)
        arguments.append(QFile::decodeName(argv[i]));
    return arguments;
}

bool hasDisplay()
{
    return !qEnvironmentVariableIsEmpty("DISPLAY") || !qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY");
}

// Without UTF-8, as in many containers, Qt warns at every start and file names get lost.
void useUtf8()
{
    std::setlocale(LC_ALL, "");
    if (std::strcmp(nl_langinfo(CODESET), "UTF-8") != 0)
        qputenv("LC_ALL", "C.UTF-8");
}

// Snapshots and batches need no display, and a snapshot must look the same on every desktop.
void choosePlatform(CommandLine::Task task)
{
    const bool needsDisplay = task != CommandLine::Task::SaveSnapshot && task != CommandLine::Task::RunBatch;
    if (!needsDisplay && qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "offscreen");
}

int saveSnapshotOf(MainWindow& window, const QString& file, const QString& scriptFile)
{
    // The window is laid out like any other but painted only once, into the image.
    window.setAttribute(Qt::WA_DontShowOnScreen);
    window.show();
    QCoreApplication::processEvents();
    window.fit();
    QString error;
    if (!scriptFile.isEmpty() && !window.runScript(scriptFile, &error))
        return fail(Failure, error);
    error = window.saveSnapshot(file);
    return error.isEmpty() ? EXIT_SUCCESS : fail(Failure, error);
}

// Only a person's window remembers anything: what a script does must depend on nothing but its arguments.
std::unique_ptr<WindowSettings> settingsFor(const CommandLine& commandLine)
{
    const bool isRemembered = commandLine.scriptFile.isEmpty() && !commandLine.isFresh;
    return isRemembered ? std::make_unique<WindowSettings>(WindowSettings::userFile()) : nullptr;
}

// After an error the window stays open, so that the user sees how far the script came.
void runScriptIn(MainWindow& window, const QString& file)
{
    QString error;
    if (!window.runScript(file, &error))
        fail(Failure, error);
}

QString samplePath()
{
    return sampleProject(QCoreApplication::applicationDirPath() + SamplePath,
        QStandardPaths::writableLocation(QStandardPaths::AppLocalDataLocation));
}

int run(const CommandLine& commandLine)
{
    const QString path = commandLine.path.isEmpty() ? samplePath() : commandLine.path;
    QString error;
    std::optional<LoadProgress> progress;
    if (commandLine.task == CommandLine::Task::ShowWindow)
        progress.emplace(path, nullptr, LoadProgress::Cancelling::Possible);
    std::unique_ptr<ProjectSession> session = ProjectSession::open(path, &error,
        commandLine.takesOver ? ProjectSession::DoubtfulLock::IsTakenOver : ProjectSession::DoubtfulLock::Stays);
    if (!session)
        return fail(Failure, error);
    for (const QString& warning : session->warnings())
        say(QStringLiteral("warning: %1").arg(warning));
    for (const QString& message : session->recoveryMessages())
        say(message);
    if (commandLine.task == CommandLine::Task::RunBatch)
        return runBatch(
            std::move(session), commandLine.scriptFile, commandLine.checks ? BatchEnd::Checks : BatchEnd::Plain);
    MainWindow window(std::move(session));
    progress.reset();
    QObject::connect(&window, &MainWindow::scriptWrote, &window, &writeToStream);
    if (commandLine.task == CommandLine::Task::SaveSnapshot) {
        window.resize(commandLine.windowSize.isEmpty() ? SnapshotSize : commandLine.windowSize);
        const int status = saveSnapshotOf(window, commandLine.snapshotFile, commandLine.scriptFile);
        MainWindow::endsProgram();
        return status;
    }
    window.memory().begin(settingsFor(commandLine), commandLine.windowSize);
    window.show();
    if (!commandLine.scriptFile.isEmpty())
        new WindowArrival(&window, [&] { runScriptIn(window, commandLine.scriptFile); }); // deletes itself
    const int status = QApplication::exec();
    MainWindow::endsProgram();
    return status;
}

// "zelchip export" and "zelchip place" are programs of their own, without a window. A folder of such a name opens as
// ./export.
int runConstraints(const ConstraintCommand& command, int argc, char** argv)
{
    if (command.printsHelp) {
        print(constraintHelpText(command.task));
        return EXIT_SUCCESS;
    }
    if (!command.error.isEmpty())
        return fail(UsageError,
            command.error
                + QStringLiteral("\nzelchip %1 --help says what there is.").arg(QString::fromLocal8Bit(argv[1])));
    choosePlatform(CommandLine::Task::RunBatch);
    silencePlatformMessages();
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zelchip"));
    return runConstraintCommand(command);
}

int runApplication(const CommandLine& commandLine, int argc, char** argv)
{
    choosePlatform(commandLine.task);
    if (qEnvironmentVariableIsEmpty("QT_QPA_PLATFORM") && !hasDisplay())
        return fail(Failure,
            QStringLiteral("There is no display to show the window on; --snapshot FILE.png renders it into a file."));
    silencePlatformMessages();
#if QT_VERSION < QT_VERSION_CHECK(6, 0, 0)
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
#endif
    QApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("zelchip"));
    QCoreApplication::setApplicationVersion(QStringLiteral(ZELCHIP_VERSION));
    QGuiApplication::setDesktopFileName(QStringLiteral(ZELCHIP_APPLICATION_ID));
    applyTheme();
    return run(commandLine);
}

// "zelchip import" is a program of its own, without a window. A folder of that name opens as ./import.
int runImportCommand(const QStringList& arguments)
{
    const ImportCommand command = parseImportCommand(arguments);
    if (command.printsHelp) {
        print(importHelpText());
        return EXIT_SUCCESS;
    }
    if (!command.error.isEmpty())
        return fail(UsageError, command.error + QStringLiteral("\nzelchip import --help says what there is."));
    return runImport(command.options);
}

} // namespace

int main(int argc, char** argv)
{
    // Writing beyond the file size limit must fail with an error instead of ending the program.
    std::signal(SIGXFSZ, SIG_IGN);
    useUtf8();
    const QStringList arguments = argumentList(argc, argv);
    if (arguments.value(1) == QLatin1String("import"))
        return runImportCommand(arguments.mid(2));
    const ConstraintCommand constraints = parseConstraintCommand(arguments.mid(1));
    if (constraints.task != ConstraintCommand::Task::None)
        return runConstraints(constraints, argc, argv);
    const CommandLine commandLine = parseCommandLine(arguments);
    switch (commandLine.task) {
    case CommandLine::Task::ReportError:
        return fail(UsageError, commandLine.error + QStringLiteral("\nzelchip --help says what there is."));
    case CommandLine::Task::PrintHelp:
        print(helpText(WindowSettings::userFile()));
        return EXIT_SUCCESS;
    case CommandLine::Task::PrintVersion:
        print(QStringLiteral("zelchip " ZELCHIP_VERSION "\n"));
        return EXIT_SUCCESS;
    default:
        return runApplication(commandLine, argc, argv);
    }
}
