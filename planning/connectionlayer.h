// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelviewlayer.h"
#include "planning/linepicture.h"
#include "planning/planlines.h"
#include "planning/planmark.h"

#include <QList>
#include <QPoint>
#include <QTimer>

#include <vector>

class QPainterPath;

namespace mirn::zelchipview {

// Lines between sites, over the drawing. A few are gentle curves with a dot at each placed end; thousands are straight
// and thin, and come from a picture of their own. A line leads to a site even if the drawing hides that at its present
// scale, but has no dot there, since nothing would be below it. A stub towards a hidden site is left out.
class ConnectionLayer final : public ZelViewLayer
{
    Q_OBJECT
public:
    enum class Style { Strong, Thin };

    explicit ConnectionLayer(QGraphicsView* view);

    void setLines(std::vector<PlanLine> lines, Style style);
    [[nodiscard]] const std::vector<PlanLine>& lines() const { return m_lines; }

    [[nodiscard]] PlanMarks marks() const;
    static void paintSample(QPainter& painter, const QRectF& area, PlanMark mark);

    // Returns the line nearest to a position of the viewport, if it is within 4 pixels, else null. It is valid until
    // the next setLines().
    [[nodiscard]] const PlanLine* lineAt(QPoint position) const;

    void paint(QPainter& painter, const QRect& exposed) override;

private:
    [[nodiscard]] bool hasFewLines() const;
    void updateLines();
    [[nodiscard]] QList<int> visibleLayers() const;
    void paintPicture(QPainter& painter, const QRect& exposed);
    void paintThinLines(QPainter& painter) const;
    void paintCurve(QPainter& painter, const QPainterPath& curve, const PlanLine& line) const;
    void paintDots(QPainter& painter, const QPainterPath& curve, const PlanLine& line, const QList<int>& layers) const;
    [[nodiscard]] QPainterPath curveOf(const PlanLine& line) const;
    [[nodiscard]] double distanceTo(const PlanLine& line, const QPointF& position) const;

    std::vector<PlanLine> m_lines;
    Style m_style = Style::Strong;
    LinePicture m_picture;
    QTimer m_ahead; // draws parts of the picture that are not in sight yet when there is nothing else to do
};

} // namespace mirn::zelchipview
