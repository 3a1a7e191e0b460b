// SPDX-License-Identifier: MIT
#include "chipview/toolactions.h"

#include "graphics/zelconstants.h"
#include "platform/contract/baseaction.h"
#include "platform/contract/zeltext.h"

#include <QActionGroup>
#include <QMenu>

namespace mirn::zelchipview {

namespace {

const QString SelectName = QStringLiteral("select");
const QString PanName = QStringLiteral("pan");
const QString ZoomName = QStringLiteral("zoom area");
const QString FilterName = QStringLiteral("filter");

QAction* newAction(const QString& name, QActionGroup* group)
{
    return new BaseAction(toEngineText(name).c_str(), group); // child of the group
}

} // namespace

ToolActions::ToolActions(QObject* parent)
    : m_group(new QActionGroup(parent))
{
    m_actions.insert(ACTION_SELECT, newAction(SelectName, m_group));
    m_actions.insert(ACTION_PAN, newAction(PanName, m_group));
    m_actions.insert(ACTION_ZOOM, newAction(ZoomName, m_group));
    m_actions[ACTION_SELECT]->setChecked(true);
}

int ToolActions::mouseMode() const
{
    for (auto action = m_actions.cbegin(); action != m_actions.cend(); ++action) {
        if (action.value() && action.value()->isChecked())
            return action.key();
    }
    return ACTION_SELECT;
}

void ToolActions::setFilterMenu(QMenu* menu)
{
    QAction* filter = newAction(FilterName, m_group);
    filter->setCheckable(false);
    filter->setMenu(menu);
    // An earlier filter action may still be in a host's tool bar; the group keeps it.
    m_actions.insert(ACTION_FILTER, filter);
}

} // namespace mirn::zelchipview
