// SPDX-License-Identifier: MIT
#include "host/window/problemsdock.h"

#include "engine/referenceengine.h"
#include "host/design/designeditor.h"
#include "host/dialogs/messagebox.h"
#include "host/project/projectsession.h"
#include "host/widgets/problemlist.h"
#include "host/window/drawingarea.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace mirn::zelchip {

namespace {

bool isErrorProblem(const zelengine::Problem& problem)
{
    return problem.severity == zelengine::Problem::Severity::Error;
}

std::vector<ListedProblem> listed(const std::vector<zelengine::Problem>& problems)
{
    std::vector<ListedProblem> result;
    result.reserve(problems.size());
    for (const zelengine::Problem& problem : problems)
        result.push_back({isErrorProblem(problem) ? ListedProblem::Severity::Error : ListedProblem::Severity::Warning,
            asSentence(problem.sentence), problem.resources, problem.sites});
    return result;
}

} // namespace

ProblemsDock::ProblemsDock(QMainWindow* window, QDockWidget* console, Area area)
    : ListDock(window, console, QStringLiteral("Problems"), {tr("Problems"), tr("Problems (%1)"), tr("Pro&blems")},
        std::move(area))
    , m_list(new ProblemList([this](const ListedProblem& problem) { show(problem); }, this))
{
    setWidget(m_list);
}

void ProblemsDock::refresh()
{
    const DrawingArea* shown = area();
    if (!shown)
        return;
    const std::vector<zelengine::Problem>& problems = shown->session().editor().engine().problems();
    const int count = static_cast<int>(problems.size());
    const int errors = static_cast<int>(std::count_if(problems.begin(), problems.end(), &isErrorProblem));
    setCount(count);
    if (isVisible())
        m_list->setProblems(listed(problems));
    Q_EMIT counted(errors, count - errors);
}

// The focus stays in the list, so that one can go from problem to problem.
void ProblemsDock::show(const ListedProblem& problem)
{
    DrawingArea* shown = area();
    if (shown && !problem.resources.isEmpty())
        shown->selectRow(problem.resources.first());
    if (shown && !problem.sites.empty())
        shown->selectAndZoom(problem.sites);
}

} // namespace mirn::zelchip
