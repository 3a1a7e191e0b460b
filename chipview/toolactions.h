// SPDX-License-Identifier: MIT
#pragma once

#include <QMap>

class QAction;
class QActionGroup;
class QMenu;
class QObject;

namespace mirn::zelchipview {

// The actions that a host puts into its tool bar: the mouse modes, of which exactly one is checked, and the filter.
// They are children of the group, the group is the controller's.
class ToolActions final
{
public:
    explicit ToolActions(QObject* parent);

    // By ZelChipViewActionId.
    [[nodiscard]] QMap<int, QAction*>& byId() { return m_actions; }

    // Null for an unknown id.
    [[nodiscard]] QAction* action(int id) const { return m_actions.value(id, nullptr); }

    // The mode whose action is checked; selecting when none is.
    [[nodiscard]] int mouseMode() const;

    // Makes the filter action anew, with `menu`. It opens a menu and is no mode, so it is not checkable.
    void setFilterMenu(QMenu* menu);

private:
    QActionGroup* const m_group; // child of the constructor's parent
    QMap<int, QAction*> m_actions;
};

} // namespace mirn::zelchipview
