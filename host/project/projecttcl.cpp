// SPDX-License-Identifier: MIT
#include "host/project/projecttcl.h"

#include "engine/referenceengine.h"
#include "host/constraints/constraintexport.h"
#include "host/design/designeditor.h"
#include "host/design/placementdiff.h"
#include "host/project/importtcl.h"
#include "host/project/projectsession.h"
#include "host/tcl/arguments.h"

#include <QMap>

#include <optional>
#include <utility>

namespace mirn::zelchip {

namespace {

const QString ProjectCommand = QStringLiteral("zel_project");
const QString TemplateOption = QStringLiteral("-template");
const QString OutputOption = QStringLiteral("-o");

TclResult info(const ProjectSession& session)
{
    const zelengine::ReferenceEngine& engine = session.editor().engine();
    const zelengine::Project& project = engine.project();
    return TclResult::value(TclInterpreter::list({QStringLiteral("name"), project.name, QStringLiteral("device"),
        engine.device().name(), QStringLiteral("design"), engine.design().name(), QStringLiteral("flow"), project.flow,
        QStringLiteral("directory"), project.directory, QStringLiteral("modified"),
        QString::number(session.editor().isModified() ? 1 : 0)}));
}

QString problemWords(const zelengine::Problem& problem)
{
    QStringList sites;
    for (int id : problem.sites)
        sites.append(QString::number(id));
    const bool isError = problem.severity == zelengine::Problem::Severity::Error;
    return TclInterpreter::list(
        {QStringLiteral("severity"), isError ? QStringLiteral("error") : QStringLiteral("warning"),
            QStringLiteral("sentence"), problem.sentence, QStringLiteral("resources"),
            TclInterpreter::list(problem.resources), QStringLiteral("sites"), TclInterpreter::list(sites)});
}

TclResult check(const ProjectSession& session)
{
    QStringList problems;
    for (const zelengine::Problem& problem : session.editor().engine().problems())
        problems.append(problemWords(problem));
    return TclResult::value(TclInterpreter::list(problems));
}

QString differenceWords(const PlacementDifference& difference)
{
    static const QMap<PlacementDifference::What, QString> Names{
        {PlacementDifference::What::Existence, QStringLiteral("existence")},
        {PlacementDifference::What::Place, QStringLiteral("place")},
        {PlacementDifference::What::Lock, QStringLiteral("lock")},
        {PlacementDifference::What::Parameter, QStringLiteral("parameter")},
        {PlacementDifference::What::Setting, QStringLiteral("setting")}};
    return TclInterpreter::list({QStringLiteral("name"), difference.name, QStringLiteral("what"),
        Names.value(difference.what), QStringLiteral("key"), difference.key, QStringLiteral("from"), difference.from,
        QStringLiteral("to"), difference.to});
}

TclResult diff(const ProjectSession& session, const QStringList& files)
{
    QString error;
    const DesignEditor& editor = session.editor();
    const auto other
        = files.isEmpty() ? readSavedPlacement(editor, &error) : readPlacement(editor, files.first(), &error);
    if (!other)
        return TclResult::error(error);
    QStringList differences;
    for (const PlacementDifference& difference : placementDifferences(*other, editor.engine()))
        differences.append(differenceWords(difference));
    return TclResult::value(TclInterpreter::list(differences));
}

// Without a file it returns the text.
TclResult exportTo(const ProjectSession& session, const Arguments& arguments)
{
    const zelengine::ReferenceEngine& engine = session.editor().engine();
    const QString format = arguments.text(TemplateOption);
    if (arguments.has(OutputOption))
        return resultOf(exportConstraints(engine, format, arguments.text(OutputOption)));
    QString error;
    const std::optional<QByteArray> constraints = constraintsOf(engine, format, &error);
    return constraints ? TclResult::value(QString::fromUtf8(*constraints)) : TclResult::error(error);
}

} // namespace

void addProjectCommands(TclInterpreter& interpreter, const ProjectCommands& commands)
{
    Subcommands subcommands{
        {QStringLiteral("open"),
            [open = commands.open](
                const Arguments& arguments) { return resultOf(open(arguments.positional().first())); }},
        {QStringLiteral("import"),
            [&interpreter](const Arguments& arguments) { return importTables(interpreter, arguments); }},
        {QStringLiteral("save"), [save = commands.save](const Arguments&) { return resultOf(save()); }},
        {QStringLiteral("refresh"), [refresh = commands.refresh](const Arguments&) { return resultOf(refresh()); }},
        {QStringLiteral("export"),
            [session = commands.session](const Arguments& arguments) { return exportTo(session(), arguments); }},
        {QStringLiteral("info"), [session = commands.session](const Arguments&) { return info(session()); }},
        {QStringLiteral("check"), [session = commands.session](const Arguments&) { return check(session()); }},
        {QStringLiteral("diff"),
            [session = commands.session](
                const Arguments& arguments) { return diff(session(), arguments.positional()); }},
    };
    interpreter.addCommand(ProjectCommand, ensemble(ProjectCommand, std::move(subcommands)));
}

} // namespace mirn::zelchip
