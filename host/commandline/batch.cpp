// SPDX-License-Identifier: MIT
#include "host/commandline/batch.h"

#include "engine/referenceengine.h"
#include "host/commandline/standardstreams.h"
#include "host/design/designeditor.h"
#include "host/project/commandshell.h"
#include "host/project/projectsession.h"
#include "host/project/projecttcl.h"
#include "host/window/windowtcl.h"

#include <cstdlib>
#include <optional>

namespace mirn::zelchip {

namespace {

// Returns whether there is no error among the problems.
bool listProblems(const zelengine::ReferenceEngine& engine)
{
    bool isSound = true;
    for (const zelengine::Problem& problem : engine.problems()) {
        const bool isError = problem.severity == zelengine::Problem::Severity::Error;
        isSound = isSound && !isError;
        writeToStream(QStringLiteral("zelchip: %1: %2\n")
                          .arg(isError ? QStringLiteral("error") : QStringLiteral("warning"), problem.sentence),
            TclInterpreter::Channel::Error);
    }
    return isSound;
}

PositionSource positionsOf(const ProjectSession* session)
{
    return [session] {
        return [points = session->sitePoints()](int site) {
            const auto point = points.constFind(site);
            return point == points.constEnd() ? std::nullopt : std::make_optional(*point);
        };
    };
}

} // namespace

int runBatch(std::unique_ptr<ProjectSession> session, const QString& scriptFile, BatchEnd end)
{
    CommandShell shell;
    QObject::connect(&shell, &CommandShell::wrote, &shell, &writeToStream);
    ProjectCommands commands;
    commands.open = [&](const QString& path) {
        QString error;
        std::unique_ptr<ProjectSession> other = ProjectSession::open(path, &error);
        if (!other)
            return error;
        shell.setEditor(other->editor(), positionsOf(other.get()));
        session = std::move(other);
        return QString();
    };
    commands.save = [&] { return session->editor().save(); };
    commands.refresh = [] { return QString(); };
    commands.session = [&]() -> const ProjectSession& { return *session; };
    addProjectCommands(shell.interpreter(), commands);
    addWindowlessCommands(shell.interpreter());
    shell.setEditor(session->editor(), positionsOf(session.get()));

    const TclResult result = scriptFile.isEmpty() ? TclResult::value() : shell.runFile(scriptFile);
    if (!result.isOk)
        writeToStream(QStringLiteral("zelchip: %1\n").arg(result.text), TclInterpreter::Channel::Error);
    const bool isSound = end == BatchEnd::Plain || listProblems(session->editor().engine());
    return result.isOk && isSound ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace mirn::zelchip
