// SPDX-License-Identifier: MIT
#include "graphics/zeltextitem.h"

#include "chipview/zelchipviewdatabase.h"

#include <QFontMetricsF>
#include <QPainter>
#include <QTransform>

namespace mirn::zelchipview {

namespace {

// The area that a text covers when it is drawn at the origin, with room for overhanging and smoothed edges.
QRectF glyphRectOf(const QString& text, const QFont& font, int rotation)
{
    constexpr qreal Overhang = 2.0;
    const QFontMetricsF metrics(font);
    const QRectF upright(0, -metrics.ascent(), metrics.horizontalAdvance(text), metrics.height());
    return QTransform().rotate(rotation).mapRect(upright.adjusted(-Overhang, -Overhang, Overhang, Overhang));
}

} // namespace

ZELTextItem::ZELTextItem(int id)
    : ChipElement(id)
{
    setPos(value<QPointF>(ATTR_POS));
    setScale(paintrules::TextItemScale);
}

ZELTextItem::~ZELTextItem()
{
    leaveScene(scene());
}

QRectF ZELTextItem::boundingRect() const
{
    return QGraphicsTextItem::boundingRect().united(m_glyphRect);
}

void ZELTextItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    if (!prepareToPaint())
        return;
    painter->setFont(textFont());
    painter->setBrush(QBrush(paintrules::colorOf(value<unsigned int>(ATTR_FILL_COLOR))));
    painter->rotate(value<int>(ATTR_ROTATION));
    painter->drawText(QPointF(0, 0), value<QString>(ATTR_TEXT));
}

void ZELTextItem::synchronise(ElementStates)
{
    const QString text = value<QString>(ATTR_TEXT);
    if (m_shownText == text)
        return;
    m_shownText = text;
    const QFont font = textFont();
    setFont(font); // the document then covers about as much as the text does
    setPlainText(text);
    prepareGeometryChange();
    m_glyphRect = glyphRectOf(text, font, value<int>(ATTR_ROTATION));
}

QVariant ZELTextItem::itemChange(GraphicsItemChange change, const QVariant& value)
{
    if (change == ItemSceneChange)
        leaveScene(scene());
    else if (change == ItemSceneHasChanged)
        enterScene(scene());
    return QGraphicsTextItem::itemChange(change, value);
}

void ZELTextItem::dragEnterEvent(QGraphicsSceneDragDropEvent* event)
{
    ZELChipViewDatabase::getInstance()->clearHighlightedProbPlaceItems();
    QGraphicsTextItem::dragEnterEvent(event);
}

void ZELTextItem::dropEvent(QGraphicsSceneDragDropEvent* event)
{
    ZELChipViewDatabase::getInstance()->clearHighlightedProbPlaceItems();
    QGraphicsTextItem::dropEvent(event);
}

QFont ZELTextItem::textFont() const
{
    return paintrules::textFont(value<QString>(ATTR_FONT_FAMILY), value<double>(ATTR_FONT_SIZE));
}

} // namespace mirn::zelchipview
