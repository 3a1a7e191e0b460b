// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QObject>
#include <QRectF>

#include <functional>

class QGraphicsItem;
class QGraphicsScene;

namespace mirn::zelchipview {

// Tracks the visible items of a scene that are not elements of the drawing: the items that a host has added. Items do
// not report a move to anybody but their scene, so this class listens to QGraphicsScene::changed(). The scene elements
// own it; it owns no items.
class ForeignItems final : public QObject
{
public:
    // Returns whether an item is foreign. It is called for every item in a changed area.
    using Question = std::function<bool(QGraphicsItem* item)>;

    // `appeared` is called when the first foreign item is found after there were none.
    ForeignItems(QGraphicsScene& scene, Question isForeign, std::function<void()> appeared);

    [[nodiscard]] bool isEmpty() const { return m_places.isEmpty(); }

    // Qt reports changes at the next turn of the event loop. This call delivers the pending ones at once.
    void deliverPendingChanges();

    // Items added between the two calls, which may be nested, are not examined. Both calls flush the calls that Qt
    // queues for each new item: otherwise closing the window before the next turn of the event loop takes time
    // quadratic in the number of items.
    void pause();
    void resume();

private:
    // The scene bounds when last seen. The item may have been deleted, so the pointer is never dereferenced.
    using Places = QHash<QGraphicsItem*, QRectF>;

    void examine(const QList<QRectF>& areas);
    [[nodiscard]] Places foreignAmong(const QList<QGraphicsItem*>& items) const;
    [[nodiscard]] bool areAllKnownAmong(const Places& found, const QList<QRectF>& areas) const;

    QGraphicsScene& m_scene;
    const Question m_isForeign;
    const std::function<void()> m_appeared;
    Places m_places;
    int m_pauses = 0;
};

} // namespace mirn::zelchipview
