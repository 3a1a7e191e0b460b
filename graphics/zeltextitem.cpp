// SPDX-License-Identifier: MIT
#include "graphics/zeltextitem.h"

#include "graphics/elements/chipscene.h"
#include "graphics/elements/drawingcontroller.h"

#include <QEvent>
#include <QFontMetricsF>
#include <QPainter>
#include <QPainterPath>
#include <QTransform>

#include <algorithm>
#include <cmath>

namespace mirn::zelchipview {

namespace {

constexpr qreal DocumentMargin = 4.0; // QTextDocument's default

// Returns the area that a text covers when it is drawn at the origin, with room for overhanging and antialiased edges.
QRectF glyphRectOf(qreal length, const QFontMetricsF& metrics, int rotation)
{
    constexpr qreal Overhang = 2.0;
    const QRectF upright(0, -metrics.ascent(), length, metrics.height());
    return QTransform().rotate(rotation).mapRect(upright.adjusted(-Overhang, -Overhang, Overhang, Overhang));
}

bool isMultiline(const QString& text)
{
    return std::any_of(text.begin(), text.end(), [](QChar c) { return c.unicode() < ' ' || c.unicode() == 0x7f; });
}

} // namespace

ZELTextItem::ZELTextItem(int id)
    : ChipElement(id, Placing::WhenShown)
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
    if (!m_isShown)
        return QGraphicsTextItem::boundingRect();
    measure();
    return m_documentRect.united(m_glyphRect);
}

QPainterPath ZELTextItem::shape() const
{
    if (!m_isShown)
        return QGraphicsTextItem::shape();
    QPainterPath path;
    path.addRect(documentRect());
    return path;
}

bool ZELTextItem::contains(const QPointF& point) const
{
    return documentRect().contains(point);
}

QRectF ZELTextItem::documentRect() const
{
    if (!m_isShown)
        return QGraphicsTextItem::boundingRect();
    measure();
    return m_documentRect;
}

void ZELTextItem::measure() const
{
    if (!m_documentRect.isNull())
        return;
    const QFontMetricsF metrics(textFont());
    const qreal length = metrics.horizontalAdvance(m_shown.text);
    m_documentRect = m_hasDocument && !QGraphicsTextItem::toPlainText().isEmpty()
        ? QGraphicsTextItem::boundingRect()
        : QRectF(0, 0, length + 2 * DocumentMargin, std::ceil(metrics.height()) + 2 * DocumentMargin);
    m_glyphRect = glyphRectOf(length, metrics, m_shown.rotation);
}

void ZELTextItem::paint(QPainter* painter, const QStyleOptionGraphicsItem*, QWidget*)
{
    ElementStates states;
    if (!prepareToPaint(states))
        return;
    makeDocument();
    painter->setFont(textFont());
    painter->setBrush(QBrush(paintrules::colorOf(m_shown.color)));
    painter->rotate(m_shown.rotation);
    painter->drawText(QPointF(0, 0), m_shown.text);
}

void ZELTextItem::makeDocument()
{
    if (m_hasDocument)
        return;
    m_hasDocument = true;
    fillDocument();
}

void ZELTextItem::fillDocument()
{
    setFont(textFont()); // makes the document about as large as the drawn text
    setDefaultTextColor(paintrules::colorOf(m_shown.color));
    setPlainText(m_shown.text);
    m_documentRect = QRectF(); // to be measured again: several lines are larger than one
}

bool ZELTextItem::isUpToDate() const
{
    return m_shown.text == value<QString>(ATTR_TEXT) && m_shown.family == value<QString>(ATTR_FONT_FAMILY)
        && paintrules::textPixelSize(m_shown.fontSize) == paintrules::textPixelSize(value<double>(ATTR_FONT_SIZE))
        && m_shown.rotation == value<int>(ATTR_ROTATION) && m_shown.color == value<unsigned int>(ATTR_FILL_COLOR);
}

bool ZELTextItem::synchronise(ElementStates)
{
    if (m_isShown && isUpToDate())
        return false;
    prepareGeometryChange();
    m_isShown = true;
    m_shown = {value<QString>(ATTR_TEXT), value<QString>(ATTR_FONT_FAMILY), value<double>(ATTR_FONT_SIZE),
        value<int>(ATTR_ROTATION), value<unsigned int>(ATTR_FILL_COLOR)};
    m_documentRect = QRectF();
    // measure() computes the size of a single line only; the document measures several.
    if (m_hasDocument)
        fillDocument();
    else if (isMultiline(m_shown.text) || isAmongFewTexts())
        makeDocument();
    return true;
}

bool ZELTextItem::isAmongFewTexts() const
{
    auto* chipScene = qobject_cast<ChipScene*>(scene());
    return chipScene && chipScene->hasFewTexts();
}

QString ZELTextItem::toPlainText() const
{
    if (m_isShown)
        const_cast<ZELTextItem*>(this)->makeDocument(); // created lazily, as Qt itself does
    return QGraphicsTextItem::toPlainText();
}

QFont ZELTextItem::font() const
{
    return m_isShown ? textFont() : QGraphicsTextItem::font();
}

QColor ZELTextItem::defaultTextColor() const
{
    return m_isShown ? paintrules::colorOf(m_shown.color) : QGraphicsTextItem::defaultTextColor();
}

QTextDocument* ZELTextItem::document() const
{
    if (m_isShown)
        const_cast<ZELTextItem*>(this)->makeDocument();
    return QGraphicsTextItem::document();
}

QVariant ZELTextItem::itemChange(GraphicsItemChange change, const QVariant& value)
{
    noticeChange(change);
    if (change == ItemSceneHasChanged && m_isShown && isAmongFewTexts())
        makeDocument();
    return QGraphicsTextItem::itemChange(change, value);
}

// The base class assumes that there is a document. Window activation reaches every item, so it must not create one.
bool ZELTextItem::sceneEvent(QEvent* event)
{
    if (event->type() == QEvent::WindowActivate || event->type() == QEvent::WindowDeactivate)
        return QGraphicsItem::sceneEvent(event);
    makeDocument();
    return QGraphicsTextItem::sceneEvent(event);
}

void ZELTextItem::dragEnterEvent(QGraphicsSceneDragDropEvent* event)
{
    DrawingController::current().clearHighlightedProbPlaceItems();
    QGraphicsTextItem::dragEnterEvent(event);
}

void ZELTextItem::dropEvent(QGraphicsSceneDragDropEvent* event)
{
    DrawingController::current().clearHighlightedProbPlaceItems();
    QGraphicsTextItem::dropEvent(event);
}

QFont ZELTextItem::textFont() const
{
    return paintrules::textFont(m_shown.family, m_shown.fontSize);
}

} // namespace mirn::zelchipview
