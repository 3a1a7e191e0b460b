// SPDX-License-Identifier: MIT
#include "benchmarks/subjects/barepainter.h"

#include "graphics/elements/paintrules.h"
#include "platform/contract/zelgraphicrecords.h"
#include "platform/contract/zeltext.h"

#include <QFontMetricsF>
#include <QImage>
#include <QPainter>

using namespace mirn::zelchipview;

namespace zelbench {

namespace {

// The margin around a picture, in its pixels, that hairlines and antialiased edges reach beyond their geometry.
constexpr qreal Margin = 2.0;

QRectF enlarged(const QRectF& rect, qreal by)
{
    return rect.normalized().adjusted(-by, -by, by, by);
}

// Unlike QRectF::intersects(), this includes rects without height or width, such as those of lines.
bool touches(const QRectF& a, const QRectF& b)
{
    return a.left() <= b.right() && b.left() <= a.right() && a.top() <= b.bottom() && b.top() <= a.bottom();
}

QTransform textTransform(const zel_Text& text)
{
    return QTransform::fromTranslate(text.x, text.y)
        .scale(paintrules::TextItemScale, paintrules::TextItemScale)
        .rotate(text.rotation);
}

QRectF textBounds(const zel_Text& text, const QFont& font, const QString& string)
{
    const QFontMetricsF metrics(font);
    const QRectF upright(0, -metrics.ascent(), metrics.horizontalAdvance(string), metrics.height());
    return textTransform(text).mapRect(enlarged(upright, Margin));
}

} // namespace

BarePainter::BarePainter(const std::vector<zel_SingleGraphItem*>& records)
{
    m_primitives.reserve(records.size());
    for (const zel_SingleGraphItem* record : records)
        m_primitives.push_back(primitiveOf(*record));
}

BarePainter::Primitive BarePainter::primitiveOf(const zel_SingleGraphItem& record)
{
    Primitive made;
    made.record = &record;
    if (const auto* line = dynamic_cast<const zel_Line*>(&record)) {
        made.pen = paintrules::linePen(line->strokeColor, line->strokeWidth);
        made.bounds = enlarged(QRectF(QPointF(line->x1, line->y1), QPointF(line->x2, line->y2)), made.pen.widthF() / 2);
    } else if (const auto* rect = dynamic_cast<const zel_Rect*>(&record)) {
        const auto look = paintrules::rectLook(rect->fillColor, rect->strokeColor, rect->strokeWidth, {});
        made.pen = paintrules::borderPen(look);
        made.brush = paintrules::fillBrush(look);
        made.bounds = enlarged(QRectF(rect->x, rect->y, rect->width, rect->height), made.pen.widthF() / 2);
    } else if (const auto* polygon = dynamic_cast<const zel_Polygon*>(&record)) {
        const auto look = paintrules::polygonLook(polygon->fillColor, {});
        made.pen = paintrules::borderPen(look);
        made.brush = paintrules::fillBrush(look);
        for (const zel_Point& point : polygon->points)
            made.corners.append(QPointF(point.x, point.y));
        made.bounds = made.corners.boundingRect();
    } else if (const auto* text = dynamic_cast<const zel_Text*>(&record)) {
        made.font = paintrules::textFont(fromEngineText(text->fontFamily), text->fontSize);
        made.brush = QBrush(paintrules::colorOf(text->fillColor));
        made.text = fromEngineText(text->text);
        made.bounds = textBounds(*text, made.font, made.text);
    }
    return made;
}

int BarePainter::paint(QImage& picture, const QTransform& sceneToPicture, const QList<int>& layers) const
{
    picture.fill(Qt::white);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.setTransform(sceneToPicture);
    const QRectF shown = sceneToPicture.inverted().mapRect(enlarged(picture.rect(), Margin));
    int painted = 0;
    for (const Primitive& primitive : m_primitives) {
        if (!touches(primitive.bounds, shown) || !layers.contains(primitive.record->layer))
            continue;
        draw(primitive, painter);
        ++painted;
    }
    return painted;
}

void BarePainter::draw(const Primitive& primitive, QPainter& painter)
{
    const zel_SingleGraphItem* record = primitive.record;
    if (record->kind == ZEL_GRAPHIC_TEXT) {
        const QTransform transform = painter.transform();
        painter.setPen(Qt::black);
        painter.setBrush(primitive.brush);
        painter.setFont(primitive.font);
        painter.setTransform(textTransform(*static_cast<const zel_Text*>(record)) * transform);
        painter.drawText(QPointF(), primitive.text);
        painter.setTransform(transform);
        return;
    }
    painter.setPen(primitive.pen);
    painter.setBrush(primitive.brush);
    if (record->kind == ZEL_GRAPHIC_LINE) {
        const auto* line = static_cast<const zel_Line*>(record);
        painter.drawLine(QLineF(line->x1, line->y1, line->x2, line->y2));
    } else if (record->kind == ZEL_GRAPHIC_RECT) {
        const auto* rect = static_cast<const zel_Rect*>(record);
        painter.drawRect(QRectF(rect->x, rect->y, rect->width, rect->height));
    } else {
        painter.drawPolygon(primitive.corners);
    }
}

} // namespace zelbench
