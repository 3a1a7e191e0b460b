// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QSet>

#include <functional>

namespace mirn::zelchipview {

// A set of element ids that share a state (selected, highlighted, filtered). It tells which ids a change touched, so
// that only those are painted again. Owned by the controller.
class ZELCHIPGUI_EXPORT ElementIdSet final
{
public:
    // Who repaints.
    using Listener = std::function<void(const QSet<int>& changed)>;

    // Called after each real change, never with an empty set.
    void setListener(Listener listener);

    // By element id.
    [[nodiscard]] bool contains(int id) const { return m_ids.contains(id); }
    [[nodiscard]] bool isEmpty() const { return m_ids.isEmpty(); }
    [[nodiscard]] const QSet<int>& ids() const { return m_ids; }

    // What is there already, or not there, changes nothing.
    void insert(int id);
    void remove(int id);
    void assign(const QSet<int>& ids);
    void clear();

private:
    void notify(const QSet<int>& changed) const;

    QSet<int> m_ids;
    Listener m_listener;
};

} // namespace mirn::zelchipview
