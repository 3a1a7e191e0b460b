// SPDX-License-Identifier: MIT
#pragma once

#include <QMenu>

#include <functional>
#include <memory>
#include <string>
#include <vector>

class QTreeWidgetItem;

namespace mirn::zelchipview {

// The context menus of the resource tree: one with all commands for top-level rows, and one with "Reset" only for rows
// below. In the planning flow, and while no flow is known, there are no commands on resources: branches can only be
// expanded and collapsed. The controller owns the menus and runs the commands.
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

    // The commands are disconnected when `context` is destroyed.
    TreeMenus(const std::string& flowName, const QObject* context, const Commands& commands);

    // A command may destroy this object while it runs; the menus are then deleted after it has returned.
    ~TreeMenus();
    TreeMenus(const TreeMenus&) = delete;
    TreeMenus& operator=(const TreeMenus&) = delete;

    // Returns the menu of a row, or null if the row has none or `item` is null. The menu may be empty. Owned by this
    // object.
    [[nodiscard]] QMenu* menuFor(const QTreeWidgetItem* item) const;

private:
    QAction* addAction(const QString& text, const QObject* context, const std::function<void()>& command);

    // Shared with the running commands, which may outlive the menus.
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
