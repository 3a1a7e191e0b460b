// SPDX-License-Identifier: MIT
#include "graphics/foreignitems.h"

#include "graphics/elements/enlarged.h"

#include <QCoreApplication>
#include <QEvent>
#include <QGraphicsItem>
#include <QGraphicsScene>
#include <QGraphicsView>

#include <algorithm>
#include <utility>

namespace mirn::zelchipview {

ForeignItems::ForeignItems(QGraphicsScene& scene, Question isForeign, std::function<void()> appeared)
    : m_scene(scene)
    , m_isForeign(std::move(isForeign))
    , m_appeared(std::move(appeared))
{
    connect(&m_scene, &QGraphicsScene::changed, this, &ForeignItems::examine);
}

void ForeignItems::deliverPendingChanges()
{
    QCoreApplication::sendPostedEvents(&m_scene, QEvent::MetaCall);
}

void ForeignItems::pause()
{
    if (m_pauses++ > 0)
        return;
    deliverPendingChanges();
    disconnect(&m_scene, &QGraphicsScene::changed, this, &ForeignItems::examine);
}

void ForeignItems::resume()
{
    if (--m_pauses > 0)
        return;
    deliverPendingChanges();
    connect(&m_scene, &QGraphicsScene::changed, this, &ForeignItems::examine);
}

void ForeignItems::examine(const QList<QRectF>& areas)
{
    const bool wasEmpty = m_places.isEmpty();
    // Qt reports the whole scene as changed when an item leaves it.
    const bool isEverything = std::any_of(
        areas.begin(), areas.end(), [this](const QRectF& area) { return area.contains(m_scene.sceneRect()); });
    Places found;
    if (isEverything) {
        const QList<QGraphicsView*> views = m_scene.views();
        for (QGraphicsView* view : views)
            // Qt repaints only the scene rectangle, but the removed item may have been outside of it.
            view->viewport()->update();
    } else {
        for (const QRectF& area : areas)
            found.insert(foreignAmong(m_scene.items(area, Qt::IntersectsItemBoundingRect)));
    }
    if (!isEverything && areAllKnownAmong(found, areas))
        m_places.insert(found);
    else
        m_places = foreignAmong(m_scene.items());
    if (wasEmpty && !m_places.isEmpty())
        m_appeared();
}

ForeignItems::Places ForeignItems::foreignAmong(const QList<QGraphicsItem*>& items) const
{
    Places places;
    for (QGraphicsItem* item : items) {
        if (m_isForeign(item) && item->isVisible())
            places.insert(item, item->sceneBoundingRect());
    }
    return places;
}

// Returns false if an item seen earlier in these areas is no longer there: it may have been deleted.
bool ForeignItems::areAllKnownAmong(const Places& found, const QList<QRectF>& areas) const
{
    for (auto known = m_places.cbegin(); known != m_places.cend(); ++known) {
        const QRectF place = enlarged(known.value(), 1);
        const auto touches = [&place](const QRectF& area) { return area.intersects(place); };
        if (!found.contains(known.key()) && std::any_of(areas.begin(), areas.end(), touches))
            return false;
    }
    return true;
}

} // namespace mirn::zelchipview
