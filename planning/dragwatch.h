// SPDX-License-Identifier: MIT
#pragma once

#include "planning/dropplan.h"
#include "platform/contract/zelexport.h"

#include <QObject>
#include <QPoint>

#include <memory>

class QDropEvent;
class QTreeWidget;
class zelchipengine;

namespace mirn::zelchipview {

class ZelGraphicsView;

// Follows the drag of a resource over a view, from the tree or from the drawing itself, and says what a drop would do.
// The view refuses a drop on an occupied site; where the two resources may exchange their sites, this class accepts it
// in the view's place. It is a child of the view; tree and engine must live as long.
class ZELCHIPGUI_EXPORT DragWatch final : public QObject
{
    Q_OBJECT
public:
    // What is dragged is the tree's selected row, as for the view.
    DragWatch(ZelGraphicsView* view, QTreeWidget* tree, zelchipengine& engine);
    ~DragWatch() override;

    bool eventFilter(QObject* watched, QEvent* event) override;

Q_SIGNALS:
    // Emitted at every move, with the element under the pointer, or without one (-1).
    void moved(const mirn::zelchipview::DropPlan& plan, QPoint globalPosition);

    // Emitted when the drag has left the view, was dropped or cancelled. The pointer may still be over the view.
    void ended(bool isOverView);

    // Emitted after ended(), when a resource was dropped where it has to be exchanged with another one. Nothing has
    // been changed yet. `isAtOnce` says that the user wants no question, by the Shift key. The drag may still be
    // finishing, so nothing must be opened before control returns to the event loop.
    void swapDropped(const mirn::zelchipview::DropPlan& plan, QPoint globalPosition, bool isAtOnce);

private:
    bool follow(QDropEvent& event);
    bool drop(QDropEvent& event);
    void end(bool isOverView);
    void plan(const QDropEvent& event);
    void forward(QEvent& event);
    void keepCountdown() const;
    [[nodiscard]] QString draggedResource() const;

    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
