// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QObject>
#include <QPointer>
#include <QRect>
#include <QTransform>
#include <QWidget> // view() asks the pointer to it

class QGraphicsView;
class QPainter;
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

    // Has paint() paint a picture for somewhere else than the screen, with another part of the scene than the viewport:
    // `area` in the painter's units, which are pixels as well.
    void paintElsewhere(QPainter& painter, const QTransform& sceneToPicture, const QRect& area);

protected:
    // Null while the view is being destroyed.
    [[nodiscard]] QGraphicsView* view() const { return m_viewport ? m_view : nullptr; }

    // What paint() paints for: where the scene lies in the painter's units, and what all of the picture covers in them.
    // That is the viewport but during paintElsewhere(), so a layer asks here and not the view.
    [[nodiscard]] QTransform sceneToPicture() const;
    [[nodiscard]] QRect pictureRect() const;

    // Whether paint() paints on the screen. Elsewhere the painter may be one of vectors, for which pictures of pixels
    // that a layer keeps are too coarse.
    [[nodiscard]] bool isOnScreen() const { return !m_elsewhere; }

    // Both have the view paint again, everything or an area in scene units and a margin in pixels around it.
    void update();
    void update(const QRectF& area, int margin);

private:
    QGraphicsView* const m_view;
    const QPointer<QWidget> m_viewport; // goes before its view does
    bool m_isShown = true;

    struct Elsewhere
    {
        QTransform sceneToPicture;
        QRect area;
    };
    const Elsewhere* m_elsewhere = nullptr; // during paintElsewhere() only
};

} // namespace mirn::zelchipview
