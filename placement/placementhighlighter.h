// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/elementidset.h"

class QTimer;

namespace mirn::zelchipview {

// Which sites light up while a resource is dragged. Entering a site only starts a countdown, so that the engine's
// search runs once per rest of the pointer and not on every move.
class PlacementHighlighter final
{
public:
    // How long the pointer rests on a site before the engine is asked, in milliseconds.
    static constexpr int RestTime = 400;
    static constexpr int NoSite = -1;

    explicit PlacementHighlighter(QTimer* timer); // the controller's, which listens to its time-out

    // The drag entered a site: (re)starts the countdown. What is highlighted stays until show() or clear().
    void arm(int site);

    // The countdown ran out: stops the timer and gives the site under the pointer.
    int takeRest();
    void show(const QList<int>& sites);

    // Back to no countdown, no hovered site, nothing highlighted.
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
