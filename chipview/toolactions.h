// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>

class QAction;
class QActionGroup;
class QMenu;
class QObject;

namespace mirn::zelchipview {

// The actions that a host puts into its tool bar: the mouse modes, of which exactly one is checked, and the filter. The
// actions are children of an action group, which is a child of the controller. What an action does is decided
// elsewhere.
class ToolActions final
{
public:
    explicit ToolActions(QObject* parent);

    // The actions by ZelChipViewActionId.
    [[nodiscard]] QMap<int, QAction*>& byId() { return m_actions; }

    // Returns null for an unknown id.
    [[nodiscard]] QAction* action(int id) const { return m_actions.value(id, nullptr); }

    // Returns the mode whose action is checked, or ACTION_SELECT if none is.
    [[nodiscard]] int mouseMode() const;

    // Replaces the filter action by one that opens `menu`. It is no mouse mode, so it is not checkable.
    void setFilterMenu(QMenu* menu);

private:
    QActionGroup* const m_group; // child of the constructor's parent
    QMap<int, QAction*> m_actions;
};

} // namespace mirn::zelchipview
