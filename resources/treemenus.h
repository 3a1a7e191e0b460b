// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QTreeWidgetItem;

namespace mirn::zelchipview {

// The context menus of the resource tree: one with all commands for top-level rows, one with "Reset" only for rows
// below. In the planning flow, and while no flow is known, there are no commands on resources: only the branches can be
// opened and closed.
class TreeMenus final
{
public:
    struct Commands
    {
        std::function<void()> reset;
        std::function<void()> remove;
        std::function<void()> configure;
        std::function<void()> expand;
        std::function<void()> collapse;
    };

    // `context` is the object whose end disconnects the commands.
    TreeMenus(const std::string& flowName, const QObject* context, const Commands& commands);

    // May be ended by one of the commands: the menus then go when it has returned.
    ~TreeMenus();
    TreeMenus(const TreeMenus&) = delete;
    TreeMenus& operator=(const TreeMenus&) = delete;

    // The menu of a row; null where it has none, and for a null item. Owned by this object; may be empty.
    [[nodiscard]] QMenu* menuFor(const QTreeWidgetItem* item) const;

private:
    QAction* addAction(const QString& text, const QObject* context, const std::function<void()>& command);

    // Shared with the commands, which may last longer than the menus.
    struct Running
    {
        int commands = 0;
        std::vector<std::unique_ptr<QMenu>> orphans;
    };

    const std::shared_ptr<Running> m_running = std::make_shared<Running>();
    std::unique_ptr<QMenu> m_popupMenu;
    std::unique_ptr<QMenu> m_resetMenu;
};

} // namespace mirn::zelchipview
