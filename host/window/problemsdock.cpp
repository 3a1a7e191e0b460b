// SPDX-License-Identifier: MIT
#include "host/window/problemsdock.h"

#include "engine/referenceengine.h"
#include "host/design/designeditor.h"
#include "host/dialogs/messagebox.h"
#include "host/project/projectsession.h"
#include "host/widgets/problemlist.h"
#include "host/window/drawingarea.h"

#include <QAction>
#include <QMainWindow>

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
    : QDockWidget(window)
    , m_console(console)
    , m_area(std::move(area))
    , m_list(new ProblemList([this](const ListedProblem& problem) { show(problem); }, this))
{
    setObjectName(QStringLiteral("Problems"));
    setWidget(m_list);
    setCount(0);
    window->addDockWidget(Qt::BottomDockWidgetArea, console);
    window->addDockWidget(Qt::BottomDockWidgetArea, this);
    hide();
    connect(toggleViewAction(), &QAction::triggered, this, [this](bool isShown) {
        if (isShown)
            come();
    });
}

void ProblemsDock::refresh()
{
    const DrawingArea* area = m_area();
    if (!area)
        return;
    const std::vector<zelengine::Problem>& problems = area->session().editor().engine().problems();
    const int count = static_cast<int>(problems.size());
    const int errors = static_cast<int>(std::count_if(problems.begin(), problems.end(), &isErrorProblem));
    setCount(count);
    if (isVisible())
        m_list->setProblems(listed(problems));
    Q_EMIT counted(errors, count - errors);
}

// A tab bar takes the focus even while it has but one tab and is not seen. Therefore there is none before.
void ProblemsDock::come()
{
    if (!m_hasCome)
        qobject_cast<QMainWindow*>(parentWidget())->tabifyDockWidget(m_console, this);
    m_hasCome = true;
    QDockWidget::show();
    raise();
    m_list->setFocus();
}

QWidget* ProblemsDock::list() const
{
    return m_list;
}

void ProblemsDock::showEvent(QShowEvent* event)
{
    QDockWidget::showEvent(event);
    refresh();
}

// The menu has the name without the count.
void ProblemsDock::setCount(int count)
{
    setWindowTitle(count == 0 ? tr("Problems") : tr("Problems (%1)").arg(locale().toString(count)));
    toggleViewAction()->setText(tr("Pro&blems"));
}

// The focus stays in the list, so that one can go from problem to problem.
void ProblemsDock::show(const ListedProblem& problem)
{
    DrawingArea* area = m_area();
    if (area && !problem.resources.isEmpty())
        area->selectRow(problem.resources.first());
    if (area && !problem.sites.empty())
        area->selectAndZoom(problem.sites);
}

} // namespace mirn::zelchip
