// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/paintrules.h"
#include "graphics/painting/displaylist.h"

#include <QFont>
#include <QPainter>
#include <QPen>
#include <QTransform>

namespace mirn::zelchipview {

// Draws single primitives with QPainter, on pixels or as vectors. The painter has the scene's transform, and has it
// again after each call.
class ShapePainter final
{
public:
    // `hairline` is how wide a pen of width 0 is, in scene units. Vectors need it: on paper, a line that is one pixel
    // of the device wide can hardly be seen. With 0 such pens are left to the painter.
    explicit ShapePainter(QPainter& painter, double hairline = 0)
        : m_painter(painter)
        , m_hairline(hairline)
    { }

    void drawRect(const QRectF& rect, const paintrules::Look& look);
    void drawLine(const Primitive& line);
    void drawPolygon(const QPointF* corners, int count, const paintrules::Look& look);

    // The transform is the scene's, and the font one of TextShaper::font().
    void drawText(const Primitive& text, const QFont& font, const QPen& pen, const QTransform& sceneToPicture);

private:
    void setPen(const QPen& pen);
    void setFill(const QBrush& brush);

    QPainter& m_painter;
    const double m_hairline;
};

// The transform of a text that stands upright in the scene.
[[nodiscard]] QTransform textTransform(const Primitive& text, const QTransform& sceneToPicture);

} // namespace mirn::zelchipview
