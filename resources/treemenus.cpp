// SPDX-License-Identifier: MIT
#include "resources/treemenus.h"

#include "graphics/zelconstants.h"

#include <QAction>
#include <QTreeWidgetItem>

#include <utility>

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

// Qt returns into a menu after its command has run, so a menu with a running command is not deleted yet.
TreeMenus::~TreeMenus()
{
    if (m_running->commands == 0)
        return;
    m_running->orphans.push_back(std::move(m_popupMenu));
    m_running->orphans.push_back(std::move(m_resetMenu));
}

QAction* TreeMenus::addAction(const QString& text, const QObject* context, const std::function<void()>& command)
{
    QAction* action = m_popupMenu->addAction(text);
    QObject::connect(action, &QAction::triggered, context, [command, running = m_running] {
        const auto held = running; // stays valid if the connection ends meanwhile
        ++held->commands;
        command();
        if (--held->commands > 0)
            return;
        for (std::unique_ptr<QMenu>& menu : held->orphans)
            menu.release()->deleteLater();
        held->orphans.clear();
    });
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
