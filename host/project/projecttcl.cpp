// SPDX-License-Identifier: MIT
#include "host/project/projecttcl.h"

#include "engine/referenceengine.h"
#include "host/design/designeditor.h"
#include "host/project/projectsession.h"
#include "host/tcl/arguments.h"

namespace mirn::zelchip {

namespace {

TclResult wrongArguments(const char* usage)
{
    return TclResult::error(QStringLiteral("wrong # args: should be \"%1\"").arg(QLatin1String(usage)));
}

TclResult info(const ProjectSession& session)
{
    const zelengine::ReferenceEngine& engine = session.editor().engine();
    const zelengine::Project& project = engine.project();
    return TclResult::value(TclInterpreter::list({QStringLiteral("name"), project.name, QStringLiteral("device"),
        engine.device().name(), QStringLiteral("design"), engine.design().name(), QStringLiteral("flow"), project.flow,
        QStringLiteral("directory"), project.directory, QStringLiteral("modified"),
        QString::number(session.editor().isModified() ? 1 : 0)}));
}

} // namespace

void addProjectCommands(TclInterpreter& interpreter, const ProjectCommands& commands)
{
    interpreter.addCommand(QStringLiteral("zel_project"),
        ensemble({
            {QStringLiteral("open"),
                [open = commands.open](const QStringList& words) {
                    return words.size() == 1 ? resultOf(open(words.first())) : wrongArguments("zel_project open DIR");
                }},
            {QStringLiteral("save"),
                [save = commands.save](const QStringList& words) {
                    return words.isEmpty() ? resultOf(save()) : wrongArguments("zel_project save");
                }},
            {QStringLiteral("refresh"),
                [refresh = commands.refresh](const QStringList& words) {
                    return words.isEmpty() ? resultOf(refresh()) : wrongArguments("zel_project refresh");
                }},
            {QStringLiteral("info"),
                [session = commands.session](const QStringList& words) {
                    return words.isEmpty() ? info(session()) : wrongArguments("zel_project info");
                }},
        }));
}

} // namespace mirn::zelchip
