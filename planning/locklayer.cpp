// SPDX-License-Identifier: MIT
#include "planning/locklayer.h"

#include "graphics/elements/chipelement.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"

#include <QColor>
#include <QGraphicsItem>
#include <QGraphicsView>
#include <QPainter>

#include <algorithm>

namespace mirn::zelchipview {

namespace {

// Lengths are pixels that do not depend on the screen's scale.
constexpr double SmallestMarkedSide = 12; // of an element
constexpr int SmallestBadge = 7;
constexpr int LargestBadge = 16;
constexpr double BadgeShare = 0.5; // of the element's shorter side
constexpr double BadgeMargin = 1;
constexpr int MostBadges = 1000; // in one paint

// The padlock stands on a light disc, so that it can be seen on every colour that a site can have.
const QColor BadgeGround(255, 255, 255, 225);
const QColor BadgeColor(40, 44, 52);

const ZELGraphicItemAttribute* attributeOfItem(const QGraphicsItem* item)
{
    const auto* element = dynamic_cast<const ChipElement*>(item);
    return element ? element->attribute() : nullptr;
}

// The outline of a site is the lowest of its rects; details and texts inside it have the same id.
const QGraphicsItem* outlineAmong(const QList<QGraphicsItem*>& items)
{
    const auto isBefore = [](const QGraphicsItem* a, const QGraphicsItem* b) {
        const bool isRect = a->type() == QGraphicsRectItem::Type;
        const bool isOtherRect = b->type() == QGraphicsRectItem::Type;
        return isRect != isOtherRect ? isRect : a->zValue() < b->zValue();
    };
    const auto lowest = std::min_element(items.begin(), items.end(), isBefore);
    return lowest == items.end() ? nullptr : *lowest;
}

} // namespace

LockLayer::LockLayer(QGraphicsView* view)
    : ZelViewLayer(view)
{ }

LockLayer::~LockLayer() = default;

void LockLayer::setElements(const std::vector<int>& ids)
{
    auto* scene = view() ? qobject_cast<ZelGraphicsScene*>(view()->scene()) : nullptr;
    if (!scene || ids == m_ids)
        return;
    m_ids = ids;
    m_places.clear();
    for (int id : ids) {
        const QGraphicsItem* item = outlineAmong(scene->itemsOf(id));
        if (const ZELGraphicItemAttribute* attribute = attributeOfItem(item))
            m_places.push_back({item->sceneBoundingRect(), attribute->layer});
    }
    update();
}

void LockLayer::paint(QPainter& painter, const QRect& exposed)
{
    auto* scene = qobject_cast<ZelGraphicsScene*>(view()->scene());
    if (!scene)
        return;
    const QTransform toView = view()->viewportTransform();
    const double pixelRatio = view()->viewport()->devicePixelRatioF();
    int count = 0;
    for (const Place& place : m_places) {
        const QRectF area = toView.mapRect(place.area);
        const double side = std::min(area.width(), area.height());
        if (side < SmallestMarkedSide || !area.intersects(exposed) || !scene->isLayerVisible(place.layer))
            continue;
        if (++count > MostBadges)
            return;
        const int size = std::clamp(static_cast<int>(side * BadgeShare), SmallestBadge, LargestBadge);
        painter.drawPixmap(
            QPointF(area.right() - size - BadgeMargin, area.top() + BadgeMargin), badge(size, pixelRatio));
    }
}

// Sites of one kind have one size, so one picture serves for many of them.
const QPixmap& LockLayer::badge(int size, double pixelRatio)
{
    const int pixels = static_cast<int>(size * pixelRatio);
    if (m_badge.width() == pixels)
        return m_badge;
    m_badge = QPixmap(pixels, pixels);
    m_badge.fill(Qt::transparent);
    QPainter painter(&m_badge);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(BadgeGround);
    painter.drawEllipse(QRectF(0, 0, pixels, pixels));
    const double margin = pixels * 0.2;
    paintPadlock(
        painter, QRectF(0, 0, pixels, pixels).adjusted(margin, margin * 0.8, -margin, -margin * 1.1), BadgeColor);
    painter.end();
    m_badge.setDevicePixelRatio(pixelRatio);
    return m_badge;
}

} // namespace mirn::zelchipview
