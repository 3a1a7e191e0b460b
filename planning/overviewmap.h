// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QWidget>

#include <memory>

namespace mirn::zelchipview {

class ZelGraphicsView;

// A small map of the whole drawing in a corner of a view, with a frame around the part that the view shows. A press or
// a drag in the map moves the view there. It comes when the view shows the drawing at four times the scale, or more, at
// which all of it fits in, and goes again below that. Its picture is painted when the program has nothing else to do,
// from twice the scale at which all fits in, so that the map need not be waited for; afterwards only what changes is
// painted. Below twice that scale, and while it is switched off, it paints nothing.
//
// It is a child of the view's viewport and stays in the bottom right corner; if another widget on the viewport is
// there, such as a cursor, it goes to the next corner that is free. It steps aside while a resource is dragged over it.
// The wheel over it works on the drawing as it would in the middle of the view. It takes no focus.
class ZELCHIPGUI_EXPORT OverviewMap final : public QWidget
{
    Q_OBJECT
public:
    // The view becomes the owner. It has to have its scene, and keep it.
    explicit OverviewMap(ZelGraphicsView* view);
    ~OverviewMap() override;

    // The map is on at the beginning. Whether it can be seen depends on the view as well.
    [[nodiscard]] bool isOn() const;
    void setOn(bool isOn);

    // Does at once what would be done later: for a picture of the window.
    void settle();

    // Watches the viewport and what else lies on it.
    bool eventFilter(QObject* watched, QEvent* event) override;

protected:
    void paintEvent(QPaintEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void wheelEvent(QWheelEvent* event) override;

private:
    void schedule();
    void follow(int milliseconds);
    void paintPicture(int milliseconds);
    void followDrag(const QEvent& event);
    void showOrHide();
    void stay();
    void moveViewTo(QPoint position);
    [[nodiscard]] QSize sizeOnViewport() const;
    [[nodiscard]] QRect freeCorner(QSize size) const;
    [[nodiscard]] QRectF frame() const;
    [[nodiscard]] QTransform toMap() const;

    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
