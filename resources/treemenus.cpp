// SPDX-License-Identifier: MIT
#include "resources/treemenus.h"

#include "graphics/zelconstants.h"

#include <QAction>
#include <QTreeWidgetItem>

namespace mirn::zelchipview {

namespace {

// The flow in which the tree offers no commands on resources.
const char PlanningFlow[] = "Post Synthesis Planning";

} // namespace

TreeMenus::TreeMenus(const std::string& flowName, const QObject* context, const Commands& commands)
    : m_popupMenu(std::make_unique<QMenu>())
    , m_resetMenu(std::make_unique<QMenu>())
{
    if (!flowName.empty() && flowName != PlanningFlow) {
        m_resetMenu->addAction(addAction(QStringLiteral("Reset"), context, commands.reset));
        addAction(QStringLiteral("Delete"), context, commands.remove);
        addAction(QStringLiteral("Config"), context, commands.configure);
        m_popupMenu->addSeparator();
    }
    addAction(QStringLiteral("Expand"), context, commands.expand);
    addAction(QStringLiteral("Collapse"), context, commands.collapse);
}

QAction* TreeMenus::addAction(const QString& text, const QObject* context, const std::function<void()>& command)
{
    QAction* action = m_popupMenu->addAction(text);
    QObject::connect(action, &QAction::triggered, context, [command] { command(); });
    return action;
}

QMenu* TreeMenus::menuFor(const QTreeWidgetItem* item) const
{
    if (!item)
        return nullptr;
    if (!item->parent())
        return m_popupMenu.get();
    const bool canReset = item->childCount() > 0 || item->data(0, RESET).toBool();
    return canReset ? m_resetMenu.get() : nullptr;
}

} // namespace mirn::zelchipview
