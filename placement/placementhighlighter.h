// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/elementidset.h"

class QTimer;

namespace mirn::zelchipview {

// The sites that light up while a resource is dragged. Entering a site only starts a countdown, so that the engine
// searches once when the pointer rests and not on every move. The controller owns it and asks the engine.
class PlacementHighlighter final
{
public:
    // How long the pointer rests on a site before the engine is asked, in milliseconds.
    static constexpr int RestTime = 400;
    static constexpr int NoSite = -1;

    explicit PlacementHighlighter(QTimer* timer); // owned by the controller, which connects its timeout

    // The drag has entered a site (element id): (re)starts the countdown. The highlight stays until show() or clear().
    void arm(int site);

    // The countdown has run out: stops the timer and returns the element id of the site under the pointer, or NoSite.
    int finishCountdown();
    void show(const QList<int>& sites);

    // Stops the countdown, and clears the hovered site and the highlight.
    void clear();

    [[nodiscard]] QTimer* timer() const { return m_timer; }
    [[nodiscard]] int hoveredSite() const { return m_hoveredSite; }
    [[nodiscard]] ElementIdSet& highlightedIds() { return m_highlighted; }

private:
    QTimer* const m_timer;
    int m_hoveredSite = NoSite; // element id
    ElementIdSet m_highlighted;
};

} // namespace mirn::zelchipview
