// SPDX-License-Identifier: MIT
#include "graphics/painting/shapepainter.h"

#include <QBrush>

#include <cmath>

namespace mirn::zelchipview {

QTransform textTransform(const Primitive& text, const QTransform& sceneToPicture)
{
    return QTransform(paintrules::TextItemScale, 0, 0, paintrules::TextItemScale, text.a, text.b) * sceneToPicture;
}

void ShapePainter::setPen(const QPen& pen)
{
    if (m_hairline == 0 || pen.widthF() > 0) {
        m_painter.setPen(pen);
        return;
    }
    QPen visible(pen);
    visible.setWidthF(m_hairline);
    m_painter.setPen(pen.color().alpha() == 0 ? QPen(Qt::NoPen) : visible);
}

// A painter of vectors writes down each brush that it is given.
void ShapePainter::setFill(const QBrush& brush)
{
    if (m_painter.brush() != brush)
        m_painter.setBrush(brush);
}

void ShapePainter::drawRect(const QRectF& rect, const paintrules::Look& look)
{
    setPen(paintrules::borderPen(look));
    setFill(paintrules::fillBrush(look));
    m_painter.drawRect(rect);
}

void ShapePainter::drawLine(const Primitive& primitive)
{
    const QLineF line(primitive.a, primitive.b, primitive.c, primitive.d);
    const bool isFinite
        = std::isfinite(line.x1()) && std::isfinite(line.y1()) && std::isfinite(line.x2()) && std::isfinite(line.y2());
    setPen(paintrules::linePen(primitive.strokeColor, primitive.strokeWidth));
    m_painter.drawLine(isFinite ? line : QLineF());
}

void ShapePainter::drawPolygon(const QPointF* corners, int count, const paintrules::Look& look)
{
    if (qAlpha(look.border) != 0)
        setPen(paintrules::borderPen(look));
    else
        m_painter.setPen(Qt::NoPen);
    setFill(QColor::fromRgb(look.fill));
    m_painter.drawPolygon(corners, count);
}

void ShapePainter::drawText(const Primitive& text, const QFont& font, const QPen& pen, const QTransform& sceneToPicture)
{
    m_painter.setPen(pen);
    setFill(paintrules::colorOf(text.fillColor));
    m_painter.setFont(font);
    m_painter.setTransform(textTransform(text, sceneToPicture));
    m_painter.rotate(static_cast<int>(text.c));
    m_painter.drawText(QPointF(0, 0), text.label->text);
    m_painter.setTransform(sceneToPicture);
}

} // namespace mirn::zelchipview
