// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QSet>

#include <algorithm>
#include <cstddef>
#include <map>
#include <utility>
#include <vector>

namespace mirn::zelchipview {

class ChipElement;

// The elements of a scene in the order in which they entered it. Finds them by element id, so that a change of state or
// of dynamic values touches only those that it names; remembers which elements of which layer have not taken over their
// geometry yet, and which are shown in a way that only Qt's own painting knows. Owns nothing.
class ElementIndex final
{
public:
    // An element without attribute is left out.
    void add(ChipElement* element);

    // One that is not there is no error.
    void remove(ChipElement* element);

    // In no particular order; empty for an unknown id.
    [[nodiscard]] std::vector<ChipElement*> elements(int elementId);

    // The same without a list. `visitor` must not add or remove elements.
    template <typename Visitor> void visit(int elementId, Visitor visitor)
    {
        sortById();
        auto entry = std::lower_bound(m_byId.begin(), m_byId.end(), std::pair<int, Slot>(elementId, 0));
        for (; entry != m_byId.end() && entry->first == elementId; ++entry) {
            if (ChipElement* element = m_elements[entry->second])
                visitor(element);
        }
    }

    // The elements of these layers that were not handed out yet.
    [[nodiscard]] std::vector<ChipElement*> takePending(const QList<int>& layers);

    // Whether any are left.
    [[nodiscard]] bool hasPending() const { return !m_pendingByLayer.empty(); }

    // By z value, elements with the same one in the order in which they entered.
    [[nodiscard]] std::vector<ChipElement*> inPaintOrder() const;

    // Counts the changes of the list, so that what was made of it knows when it is out of date.
    [[nodiscard]] unsigned version() const { return m_version; }
    [[nodiscard]] std::size_t count() const { return m_elements.size() - m_gaps; }

    // The element's z value changed.
    void restack(ChipElement* element);

    // Something else of the element changed that only Qt's own painting knows.
    void reconsider(ChipElement* element);

    // The attribute that is kept under a load number, of an element with that id, may be changed from now on.
    void watch(int loadNumber, int elementId);

    // The elements whose attributes may be changed.
    [[nodiscard]] std::vector<ChipElement*> watched() const;
    [[nodiscard]] std::size_t mostWatched() const { return m_watched.size(); }

    // The element has something new to tell once its layer is shown.
    void awaitShow(ChipElement* element);

    // Whether there are so few elements that the work of Qt for all items, after a change of one, is not felt; and so
    // few texts that the memory of their documents is not.
    [[nodiscard]] bool isSmall() const { return m_elements.size() <= FewElements; }
    [[nodiscard]] bool hasFewTexts() const { return m_textCount <= FewTexts; }

    // The attribute has another element id or layer than before.
    void renumber(ChipElement* element, int previousId);
    void changeLayer(ChipElement* element);

    // Whether any element is moved, transformed, hidden, transparent, selected in Qt's way or part of a family of
    // items.
    [[nodiscard]] bool hasUnusual() const { return !m_unusual.isEmpty(); }

private:
    using Slot = int; // index for m_elements

    enum : std::size_t { FewElements = 5000 };
    enum : int { FewTexts = 100 };

    void watch(ChipElement* element);
    void sortById();
    void closeGaps();

    std::vector<ChipElement*> m_elements; // null where one left
    std::size_t m_gaps = 0;
    int m_textCount = 0;
    std::vector<std::pair<int, Slot>> m_byId; // sorted, but for what was added since
    std::size_t m_sortedById = 0;
    std::map<int, std::vector<Slot>> m_pendingByLayer;
    std::vector<Slot> m_watched;
    QSet<ChipElement*> m_unusual;
    double m_highestZ = 0.0;
    bool m_isInPaintOrder = true;
    unsigned m_version = 1;
};

} // namespace mirn::zelchipview
