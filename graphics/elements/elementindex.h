// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QSet>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <map>
#include <set>
#include <utility>
#include <vector>

namespace mirn::zelchipview {

class ChipElement;

// The elements of a scene in the order in which they entered it. It finds them by element id, so that a change of state
// or of dynamic values touches only the elements that it names. It also records which elements are waiting for their
// layer to be shown, and which are in a condition that only Qt's own painting respects. The scene's elements object
// owns it; it owns no elements.
class ElementIndex final
{
public:
    // An element without an attribute is ignored.
    void add(ChipElement* element);

    // An element that is not in the index is ignored.
    void remove(ChipElement* element);

    // Adds an element that has no item yet, a latent one. Its slot, counted from 0 in the order of these calls, is its
    // load number less 1. The index must be empty before the first call. begin() takes the number of calls to follow.
    void beginLatent(std::size_t count);
    void addLatent(int elementId, bool isText);

    // Makes the item of a latent element and adds it to the scene, between startMaking() and finishMaking(). The latter
    // returns the element, or null if it did not come; the slot is a gap then.
    using Maker = std::function<ChipElement*(int slot)>;
    void setMaker(Maker make) { m_maker = std::move(make); }
    void startMaking(int slot) { m_making = slot; }
    ChipElement* finishMaking(int slot);

    // Takes back what was added since beginLatent().
    void dropLatent();

    [[nodiscard]] bool hasLatent() const { return m_latentCount > 0; }

    // Returns whether the elements of this layer have taken over their geometry, because it was shown.
    [[nodiscard]] bool wasShown(int layer) const { return m_shownLayers.count(layer) > 0; }

    // The element is no longer pending.
    void settle(ChipElement* element);

    // Returns the elements with this id in no particular order; empty for an unknown id.
    [[nodiscard]] std::vector<ChipElement*> elements(int elementId);

    // Calls `visitor` for each element with this id, without building a list. `visitor` must not add or remove
    // elements.
    template <typename Visitor> void visit(int elementId, Visitor visitor)
    {
        visitSlots(elementId, [&](int slot, ChipElement* element) {
            if (element || (element = made(slot)))
                visitor(element);
        });
    }

    // Does the same without making items: `visitor` gets the slot and the element, which is null if it is latent.
    template <typename Visitor> void visitSlots(int elementId, Visitor visitor)
    {
        sortById();
        auto entry = std::lower_bound(m_byId.begin(), m_byId.end(), std::pair<int, Slot>(elementId, 0));
        for (; entry != m_byId.end() && entry->first == elementId; ++entry) {
            ChipElement* element = m_elements[entry->second];
            if (element || isLatent(entry->second))
                visitor(entry->second, element);
        }
    }

    // Returns the pending elements of these layers, which are pending no more.
    [[nodiscard]] std::vector<ChipElement*> takePending(const QList<int>& layers);

    // Returns whether any elements may be pending.
    [[nodiscard]] bool hasPending() const { return !m_pendingByLayer.empty() || hasLatent(); }

    // Returns the elements that have an item by z value; those with the same z value keep the order in which they
    // entered.
    [[nodiscard]] std::vector<ChipElement*> inPaintOrder() const;

    // The version counts the changes of the list, so that anything derived from it can tell when it is out of date.
    [[nodiscard]] unsigned version() const { return m_version; }
    [[nodiscard]] std::size_t count() const { return m_elements.size() - m_gaps; }

    // Call this after the z value of an element has changed.
    void zValueChanged(ChipElement* element);

    // Call this after any other property of an element has changed that only Qt's own painting respects.
    void updateQtPainting(ChipElement* element);

    // A host may change the attribute with this load number, which belongs to an element with this id, from now on.
    void watch(int loadNumber, int elementId);

    // The elements whose attributes a host may change. watchedUpperBound() is an upper bound of their number.
    [[nodiscard]] std::vector<ChipElement*> watched() const;
    [[nodiscard]] std::size_t watchedUpperBound() const { return m_watched.size(); }

    // Makes the element pending, because it has something to take over once its layer is shown.
    void markPending(ChipElement* element);

    // hasFewItems() returns whether there are so few items that the work Qt does for all items after one item changes
    // does not matter, isSmall() whether there are as few elements. hasFewTexts() returns whether there are so few
    // texts that the memory of their documents does not matter.
    [[nodiscard]] bool hasFewItems() const { return m_elements.size() - m_latentCount <= FewElements; }
    [[nodiscard]] bool isSmall() const { return m_elements.size() <= FewElements; }
    [[nodiscard]] bool hasFewTexts() const { return m_textCount <= FewTexts; }

    // Call these after the element id or the layer of an attribute has changed.
    void renumber(ChipElement* element, int previousId);
    void changeLayer(ChipElement* element);

    // Returns whether any element is moved, transformed, hidden, transparent, selected in Qt's sense, or has a parent
    // or child item.
    [[nodiscard]] bool hasQtPainted() const { return !m_qtPainted.isEmpty(); }

private:
    using Slot = int; // index into m_elements

    enum : std::size_t { FewElements = 5000 };
    enum : int { FewTexts = 100 };

    void watch(ChipElement* element);
    void takeSlot(ChipElement* element, int elementId);
    [[nodiscard]] bool isLatent(Slot slot) const { return hasLatent() && m_isLatent[static_cast<std::size_t>(slot)]; }
    [[nodiscard]] ChipElement* made(Slot slot) { return m_maker ? m_maker(slot) : nullptr; }
    void sortById();
    void closeGaps();

    std::vector<ChipElement*> m_elements; // null where an element left or is latent
    std::vector<bool> m_isLatent; // the same indexes; may be shorter
    std::size_t m_latentCount = 0;
    std::vector<Slot> m_takenSlots; // while there are latent elements: of all that have come, some may have left again
    Maker m_maker;
    Slot m_making = -1; // the slot whose element is about to enter, or -1
    std::set<int> m_shownLayers;
    std::size_t m_gaps = 0;
    int m_textCount = 0;
    std::vector<std::pair<int, Slot>> m_byId; // element id and slot; sorted up to m_sortedById
    std::size_t m_sortedById = 0;
    std::map<int, std::vector<Slot>> m_pendingByLayer;
    std::vector<Slot> m_watched;
    QSet<ChipElement*> m_qtPainted;
    double m_highestZ = 0.0;
    bool m_isInPaintOrder = true;
    unsigned m_version = 1;
};

} // namespace mirn::zelchipview
