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

    void setAreas(std::vector<QRectF> areas); // scene coordinates

    void paint(QPainter& painter, const QRect& exposed) override;

private:
    std::vector<QRectF> m_areas;
};

} // namespace mirn::zelchipview
