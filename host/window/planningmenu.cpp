// SPDX-License-Identifier: MIT
#include "host/window/planningmenu.h"

#include "graphics/zelgraphicsview.h"
#include "host/project/projectsession.h"
#include "host/window/drawingarea.h"
#include "host/window/planninglegend.h"
#include "planning/planaids.h"
#include "resources/zeltree.h"

#include <QAction>
#include <QActionGroup>
#include <QMainWindow>
#include <QMenu>

namespace mirn::zelchip {

using zelchipview::PlanAids;

namespace {

// The object names of the actions are what the settings file has.
const QString ConnectionsName = QStringLiteral("connections-");
const QString CandidatesName = QStringLiteral("candidates");

} // namespace

PlanningMenu::PlanningMenu(QMainWindow* window)
    : QObject(window)
    , m_connections(new QActionGroup(this))
{
    auto* menu = new QMenu(tr("&Connections"), window);
    m_connectionsMenu = menu->menuAction();
    const QStringList texts{tr("&Off"), tr("Of the &Selection"), tr("&All")}; // in the order of the words
    const QStringList words = connectionWords();
    for (int n = 0; n < texts.size(); ++n) {
        QAction* action = menu->addAction(texts[n]);
        action->setObjectName(ConnectionsName + words[n]);
        action->setCheckable(true);
        action->setData(words[n]);
        m_connections->addAction(action);
    }
    m_connections->actions()[static_cast<int>(PlanAids::Connections::OfSelection)]->setChecked(true);
    m_candidates = new QAction(tr("Ca&ndidates"), window);
    m_candidates->setObjectName(CandidatesName);
    m_candidates->setCheckable(true);
    m_candidates->setChecked(true);
    const QList<QAction*> all = choices();
    for (QAction* action : all)
        connect(action, &QAction::toggled, this, &PlanningMenu::apply);
}

QStringList PlanningMenu::connectionWords()
{
    return {QStringLiteral("off"), QStringLiteral("selected"), QStringLiteral("all")};
}

QList<QAction*> PlanningMenu::choices() const
{
    return m_connections->actions() + QList<QAction*>{m_candidates};
}

void PlanningMenu::begin(const DrawingArea& area, Legend* legend)
{
    // Made after the area's ResourceTip, because of two event filters that answer tooltips the last one is asked first.
    m_aids = new PlanAids(area.graphicsView(), area.tree(), *area.session().engine()); // child of the view
    new PlanningLegend(m_aids, legend); // child of the aids
    apply();
}

void PlanningMenu::refresh()
{
    if (m_aids)
        m_aids->refresh();
}

void PlanningMenu::settle()
{
    if (m_aids)
        m_aids->settle();
}

QString PlanningMenu::connections() const
{
    const QAction* chosen = m_connections->checkedAction();
    return chosen ? chosen->data().toString() : connectionWords().first();
}

void PlanningMenu::setConnections(const QString& word)
{
    const QList<QAction*> actions = m_connections->actions();
    for (QAction* action : actions) {
        if (action->data().toString() == word)
            action->setChecked(true);
    }
}

void PlanningMenu::apply()
{
    if (!m_aids)
        return;
    const auto chosen = static_cast<PlanAids::Connections>(connectionWords().indexOf(connections()));
    if (m_aids->connections() != chosen)
        m_aids->setConnections(chosen);
    if (m_aids->areCandidatesShown() != m_candidates->isChecked())
        m_aids->setCandidatesShown(m_candidates->isChecked());
}

} // namespace mirn::zelchip
