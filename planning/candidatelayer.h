// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelviewlayer.h"
#include "planning/siteplaces.h"

#include <vector>

namespace mirn::zelchipview {

// Tints sites where a resource may go. Two thin outlines, dark outside and light inside, tell a tinted site from one
// that is selected, highlighted or filtered, whatever colours somebody can see. A site
// that the drawing hides at its present scale has no tint.
class CandidateLayer final : public ZelViewLayer
{
    Q_OBJECT
public:
    explicit CandidateLayer(QGraphicsView* view);

    void setCandidates(std::vector<SitePlace> candidates);

    [[nodiscard]] bool isEmpty() const { return m_candidates.empty(); }

    void paint(QPainter& painter, const QRect& exposed) override;

    static void paintSample(QPainter& painter, const QRect& area);

private:
    std::vector<SitePlace> m_candidates;
};

} // namespace mirn::zelchipview
