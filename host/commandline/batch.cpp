// SPDX-License-Identifier: MIT
#include "host/commandline/batch.h"

#include "host/commandline/standardstreams.h"
#include "host/design/designeditor.h"
#include "host/project/commandshell.h"
#include "host/project/projectsession.h"
#include "host/project/projecttcl.h"
#include "host/window/windowtcl.h"

#include <cstdlib>

namespace mirn::zelchip {

int runBatch(std::unique_ptr<ProjectSession> session, const QString& scriptFile)
{
    CommandShell shell;
    QObject::connect(&shell, &CommandShell::wrote, &shell, &writeToStream);
    ProjectCommands commands;
    commands.open = [&](const QString& path) {
        QString error;
        std::unique_ptr<ProjectSession> other = ProjectSession::open(path, &error);
        if (!other)
            return error;
        shell.setEditor(other->editor());
        session = std::move(other);
        return QString();
    };
    commands.save = [&] { return session->editor().save(); };
    commands.refresh = [] { return QString(); };
    commands.session = [&]() -> const ProjectSession& { return *session; };
    addProjectCommands(shell.interpreter(), commands);
    addWindowlessCommands(shell.interpreter());
    shell.setEditor(session->editor());

    const TclResult result = shell.runFile(scriptFile);
    if (!result.isOk)
        writeToStream(QStringLiteral("zelchip: %1\n").arg(result.text), TclInterpreter::Channel::Error);
    return result.isOk ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace mirn::zelchip
