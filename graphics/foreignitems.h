// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QObject>
#include <QRectF>

#include <functional>

class QGraphicsItem;
class QGraphicsScene;

namespace mirn::zelchipview {

// The visible items of a scene that are no elements of the drawing, which a host has put there. Neither they nor
// elements that a host moves report to anybody but the scene, so this listens to the changes that the scene reports.
class ForeignItems final : public QObject
{
public:
    // Returns whether an item is foreign. Asked for every item where something has changed.
    using Question = std::function<bool(QGraphicsItem* item)>;

    // `appeared` is called when there were none and now there are some.
    ForeignItems(QGraphicsScene& scene, Question isForeign, std::function<void()> appeared);

    [[nodiscard]] bool isEmpty() const { return m_places.isEmpty(); }

    // Qt reports changes at the next turn of the event loop. After this, those that came before are known.
    void catchUp();

    // What comes into the scene between the two is not looked at. Both flush the calls that Qt queues for each new
    // item; left to the event loop, closing the window early would take a time quadratic in the number of items.
    void pause();
    void resume();

private:
    using Places = QHash<QGraphicsItem*, QRectF>; // where they were seen; an item may be gone, and is not dereferenced

    void lookInto(const QList<QRectF>& areas);
    [[nodiscard]] Places foreignAmong(const QList<QGraphicsItem*>& items) const;
    [[nodiscard]] bool areAllKnownAmong(const Places& found, const QList<QRectF>& areas) const;

    QGraphicsScene& m_scene;
    const Question m_isForeign;
    const std::function<void()> m_appeared;
    Places m_places;
};

} // namespace mirn::zelchipview
