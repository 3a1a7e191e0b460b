// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelviewlayer.h"

#include <QRectF>

#include <vector>

namespace mirn::zelchipview {

// Tints sites where a resource may go. Two thin outlines, dark outside and light inside, tell a tinted site from one
// that is selected, highlighted or filtered, whatever colours somebody can see.
class CandidateLayer final : public ZelViewLayer
{
    Q_OBJECT
public:
    explicit CandidateLayer(QGraphicsView* view);

    struct Candidate
    {
        int site = -1; // element id
        QRectF area; // scene coordinates
    };
    void setCandidates(std::vector<Candidate> candidates);

    void paint(QPainter& painter, const QRect& exposed) override;

private:
    std::vector<Candidate> m_candidates;
};

} // namespace mirn::zelchipview
