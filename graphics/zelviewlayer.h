// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QObject>
#include <QPointer>
#include <QWidget> // view() asks the pointer to it

class QGraphicsView;
class QPainter;
class QRect;
class QRectF;

namespace mirn::zelchipview {

// Something that a view paints over its drawing: lines, tints, names. It is no part of the scene and takes no part in
// picking, and the drawing below it is painted as fast as without it. A layer is a child of its view, which paints its
// layers in the order in which they were created; it may also be deleted earlier.
class ZELCHIPGUI_EXPORT ZelViewLayer : public QObject
{
    Q_OBJECT
public:
    // `view` should be a ZelGraphicsView; no other view paints layers.
    explicit ZelViewLayer(QGraphicsView* view);
    ~ZelViewLayer() override;

    // A new layer is shown. A hidden layer is not asked to paint.
    [[nodiscard]] bool isShown() const { return m_isShown; }
    void setShown(bool isShown);

    // Paints the part of the layer that lies in `exposed`. The painter's coordinates are the viewport's, in pixels that
    // do not depend on the screen's scale, and everything outside the paint event's region is clipped.
    virtual void paint(QPainter& painter, const QRect& exposed) = 0;

protected:
    // Null while the view is being destroyed.
    [[nodiscard]] QGraphicsView* view() const { return m_viewport ? m_view : nullptr; }

    // Both have the view paint again, everything or an area in scene units and a margin in pixels around it.
    void update();
    void update(const QRectF& area, int margin);

private:
    QGraphicsView* const m_view;
    const QPointer<QWidget> m_viewport; // goes before its view does
    bool m_isShown = true;
};

} // namespace mirn::zelchipview
