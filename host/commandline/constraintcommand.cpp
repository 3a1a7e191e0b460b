// SPDX-License-Identifier: MIT
#include "host/commandline/constraintcommand.h"

#include "engine/referenceengine.h"
#include "host/commandline/standardstreams.h"
#include "host/constraints/constraintexport.h"
#include "host/design/designeditor.h"
#include "host/design/placementtable.h"
#include "host/project/projectsession.h"

#include <QCommandLineOption>
#include <QCommandLineParser>

#include <cerrno>
#include <cstdlib>
#include <optional>

namespace mirn::zelchip {

namespace {

using ConstraintTask = ConstraintCommand::Task;

const QString ExportWord = QStringLiteral("export");
const QString PlaceWord = QStringLiteral("place");
const QString FormatOption = QStringLiteral("template");
const QString OutputFileOption = QStringLiteral("output");
const QString ImplementationOption = QStringLiteral("implementation");
const QString ConstraintHelpOption = QStringLiteral("help");

QString wordOf(ConstraintTask task)
{
    return task == ConstraintTask::Export ? ExportWord : PlaceWord;
}

void addConstraintOptions(QCommandLineParser& parser, ConstraintTask task)
{
    parser.addOption(QCommandLineOption(ImplementationOption, QString(), QStringLiteral("NAME")));
    parser.addOption(QCommandLineOption(QStringList{ConstraintHelpOption, QStringLiteral("h")}));
    if (task != ConstraintTask::Export)
        return;
    parser.addOption(QCommandLineOption(FormatOption, QString(), QStringLiteral("TEMPLATE")));
    parser.addOption(
        QCommandLineOption(QStringList{OutputFileOption, QStringLiteral("o")}, QString(), QStringLiteral("FILE")));
}

// Returns what is missing or too much; empty if nothing is.
QString argumentError(const ConstraintCommand& command, const QStringList& positional)
{
    const int expected = command.task == ConstraintTask::Export ? 1 : 2;
    if (positional.size() > expected)
        return QStringLiteral("%1 takes no argument '%2' as well.").arg(wordOf(command.task), positional.at(expected));
    if (positional.isEmpty() || positional.first().isEmpty())
        return QStringLiteral("%1 takes the folder of a project.").arg(wordOf(command.task));
    if (command.task == ConstraintTask::Place && command.table.isEmpty())
        return QStringLiteral("place takes a table behind the project, as in place PROJECT TABLE.csv.");
    if (command.task == ConstraintTask::Export && command.format.isEmpty())
        return QStringLiteral("export takes a template, as in --template csv.");
    return {};
}

void sayOnError(const QString& text)
{
    writeToStream(QStringLiteral("zelchip: %1\n").arg(text), TclInterpreter::Channel::Error);
}

int fail(const QString& error)
{
    sayOnError(error);
    return EXIT_FAILURE;
}

int exportFrom(const DesignEditor& editor, const ConstraintCommand& command)
{
    QString error;
    if (!command.output.isEmpty()) {
        error = exportConstraints(editor.engine(), command.format, command.output);
        return error.isEmpty() ? EXIT_SUCCESS : fail(error);
    }
    const std::optional<QByteArray> constraints = constraintsOf(editor.engine(), command.format, &error);
    if (!constraints)
        return fail(error);
    return writeToOutput(*constraints) ? EXIT_SUCCESS
                                       : fail(QStringLiteral("The standard output: %1").arg(qt_error_string(errno)));
}

int placeInto(DesignEditor& editor, const ConstraintCommand& command)
{
    const TablePlacement outcome = placeFromTable(editor, command.table);
    if (!outcome.error.isEmpty())
        return fail(outcome.error);
    for (const QString& refused : outcome.refused)
        sayOnError(refused);
    writeToStream(QStringLiteral("%1 placed, %2 reset, %3 refused\n")
                      .arg(outcome.placed)
                      .arg(outcome.reset)
                      .arg(outcome.refused.size()),
        TclInterpreter::Channel::Output);
    return outcome.refused.isEmpty() ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

ConstraintCommand parseConstraintCommand(const QStringList& arguments)
{
    ConstraintCommand command;
    const QString word = arguments.value(0);
    if (word != ExportWord && word != PlaceWord)
        return command;
    command.task = word == ExportWord ? ConstraintTask::Export : ConstraintTask::Place;
    QCommandLineParser parser;
    addConstraintOptions(parser, command.task);
    if (!parser.parse(arguments)) {
        command.error = parser.errorText();
        return command;
    }
    const QStringList positional = parser.positionalArguments();
    command.printsHelp = parser.isSet(ConstraintHelpOption);
    command.project = positional.value(0);
    command.implementation = parser.value(ImplementationOption);
    if (command.task == ConstraintTask::Export) {
        command.format = parser.value(FormatOption);
        command.output = parser.value(OutputFileOption);
    } else {
        command.table = positional.value(1);
    }
    if (!command.printsHelp)
        command.error = argumentError(command, positional);
    return command;
}

QString constraintHelpText(ConstraintTask task)
{
    const QString implementation
        = QStringLiteral("  --implementation NAME  of the project (its default one)\n"
                         "  -h, --help             print this help and end\n"
                         "\n"
                         "Exit status: 0 success, 1 something could not be opened, read or written%1,\n"
                         "2 unknown arguments.\n");
    if (task == ConstraintTask::Export)
        return QStringLiteral("Usage: zelchip export PROJECT --template TEMPLATE [OPTION]...\n"
                              "\n"
                              "Writes the placement and the changed settings as a template says.\n"
                              "\n"
                              "  --template TEMPLATE    a file, or one of those that come with the program:\n"
                              "                         %1\n"
                              "  -o, --output FILE      the file to write (the standard output)\n")
                   .arg(QStringLiteral("csv, json, loc, tcl-per-resource"))
            + implementation.arg(QString());
    return QStringLiteral("Usage: zelchip place PROJECT TABLE.csv [OPTION]...\n"
                          "\n"
                          "Places resources as a table says: its column resource has their names, its column\n"
                          "site the names or ids of their sites, or nothing to take them off. The lines are\n"
                          "one change, which the next window can undo; refused ones are listed.\n"
                          "\n")
        + implementation.arg(QStringLiteral(",\nor a line was refused"));
}

int runConstraintCommand(const ConstraintCommand& command)
{
    QString error;
    const std::unique_ptr<ProjectSession> session
        = ProjectSession::open(command.project, &error, ProjectSession::DoubtfulLock::Stays, command.implementation);
    if (!session)
        return fail(error);
    for (const QString& message : session->recoveryMessages())
        sayOnError(message);
    return command.task == ConstraintTask::Export ? exportFrom(session->editor(), command)
                                                  : placeInto(session->editor(), command);
}

} // namespace mirn::zelchip
