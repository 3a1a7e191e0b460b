// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QList>
#include <QSet>

#include <vector>

namespace mirn::zelchipview {

class ChipElement;

// Finds the elements of a scene by element id, so that a change of state or of dynamic values touches only those that
// it names; and remembers which elements of which layer have not taken over their geometry yet. Owns nothing.
class ElementIndex final
{
public:
    // An element without attribute is left out.
    void add(ChipElement* element);
    void remove(ChipElement* element);

    // In no particular order; empty for an unknown id.
    [[nodiscard]] QList<ChipElement*> elements(int elementId) const;

    // The elements of these layers that were not handed out yet.
    [[nodiscard]] std::vector<ChipElement*> takePending(const QList<int>& layers);

private:
    QMultiHash<int, ChipElement*> m_byId;
    QHash<ChipElement*, int> m_idOf; // as registered: the attribute may be gone when its element leaves
    QHash<int, QSet<ChipElement*>> m_pendingByLayer;
};

} // namespace mirn::zelchipview
