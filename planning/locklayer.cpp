// SPDX-License-Identifier: MIT
#include "planning/locklayer.h"

#include "graphics/zelgraphicsscene.h"

#include <QColor>
#include <QGraphicsView>
#include <QPainter>

#include <algorithm>
#include <optional>
#include <utility>

namespace mirn::zelchipview {

namespace {

// Lengths are pixels that do not depend on the screen's scale.
constexpr double SmallestMarkedSide = 12; // of an element
constexpr int SmallestBadge = 7;
constexpr int LargestBadge = 16;
constexpr double BadgeShare = 0.5; // of the element's shorter side
constexpr double BadgeMargin = 1;
constexpr int MostBadges = 1000; // in the viewport
constexpr double SmallestAmongMany = 40; // side of a marked element if there are more

// The padlock stands on a light disc, so that it can be seen on every colour that a site can have.
const QColor BadgeGround(255, 255, 255, 225);
const QColor BadgeColor(40, 44, 52);

void paintBadge(QPainter& painter, const QRectF& area)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(BadgeGround);
    painter.drawEllipse(area);
    const double margin = area.width() * 0.2;
    LockLayer::paintPadlock(painter, area.adjusted(margin, margin * 0.8, -margin, -margin * 1.1), BadgeColor);
}

} // namespace

LockLayer::LockLayer(QGraphicsView* view)
    : ZelViewLayer(view)
{ }

LockLayer::~LockLayer() = default;

void LockLayer::setElements(const std::vector<int>& ids)
{
    auto* scene = view() ? qobject_cast<ZelGraphicsScene*>(view()->scene()) : nullptr;
    if (!scene)
        return;
    std::vector<SitePlace> places;
    for (int id : ids) {
        if (const std::optional<SitePlace> place = placeOf(*scene, id))
            places.push_back(*place);
    }
    m_ids = ids;
    if (places == m_places) // another drawing may have the elements elsewhere
        return;
    m_places = std::move(places);
    update();
}

void LockLayer::paint(QPainter& painter, const QRect& exposed)
{
    auto* scene = view() ? qobject_cast<ZelGraphicsScene*>(view()->scene()) : nullptr;
    if (!scene)
        return;
    const QTransform toView = sceneToPicture();
    const double pixelRatio = view()->viewport()->devicePixelRatioF();
    const double smallestSide = smallestMarkedSide(*scene);
    for (const SitePlace& place : m_places) {
        const QRectF area = toView.mapRect(place.area);
        const double side = std::min(area.width(), area.height());
        if (side < smallestSide || !area.intersects(exposed) || !scene->isLayerVisible(place.layer))
            continue;
        const int size = std::clamp(static_cast<int>(side * BadgeShare), SmallestBadge, LargestBadge);
        const QPointF corner(area.right() - size - BadgeMargin, area.top() + BadgeMargin);
        if (isOnScreen())
            painter.drawPixmap(corner, badge(size, pixelRatio));
        else
            paintBadge(painter, QRectF(corner, QSizeF(size, size)));
    }
}

// It counts all that is shown and not only what is exposed, so that every part of the view has the same padlocks.
double LockLayer::smallestMarkedSide(ZelGraphicsScene& scene) const
{
    const QTransform toView = sceneToPicture();
    const QRectF viewport = pictureRect();
    int count = 0;
    for (const SitePlace& place : m_places) {
        const QRectF area = toView.mapRect(place.area);
        if (std::min(area.width(), area.height()) >= SmallestMarkedSide && area.intersects(viewport)
            && scene.isLayerVisible(place.layer) && ++count > MostBadges)
            return SmallestAmongMany;
    }
    return SmallestMarkedSide;
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
    paintBadge(painter, QRectF(0, 0, pixels, pixels));
    painter.end();
    m_badge.setDevicePixelRatio(pixelRatio);
    return m_badge;
}

} // namespace mirn::zelchipview
