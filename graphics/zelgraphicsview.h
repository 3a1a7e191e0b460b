// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QGraphicsView>
#include <QList>

#include <memory>

namespace mirn::zelchipview {

// Shows the chip scene: zooms in steps between the drawing's limits, decides from the scale which layers are shown,
// and turns the mouse into selecting, zooming or panning according to the controller's mouse mode.
//
// One zoom step multiplies the transform by (1 + step) and adds step to the current scale, the value that the layer
// ranges are compared with.
class ZELCHIPGUI_EXPORT ZelGraphicsView : public QGraphicsView
{
    Q_OBJECT
public:
    // Of a ZelGraphicsScene; of any other it shows what QGraphicsView would, and zooms nothing.
    ZelGraphicsView(QGraphicsScene* scene, QWidget* parent);
    ~ZelGraphicsView() override;

    // Multiplies the transform by `scale` (> 0) and takes it as current scale, whatever the limits.
    void setCurrentScale(double scale);
    [[nodiscard]] double currentScale() const;

    // One step; nothing where the step would leave the drawing's limits.
    void zoomIn();
    void zoomOut();

    // Back by whole steps to the transform 1 and to the drawing's initial scale as current scale.
    void zoomFit();

    // Whole zoom steps between the transform and 1; negative when zoomed out.
    [[nodiscard]] int getScaleTimes() const;

    // Fits the items' united rectangle into the view, whatever the limits. Null takes the scene's zoom items; an empty
    // list or one that begins with null does nothing.
    void zoomTo(QList<QGraphicsItem*>* items);

    // Ascending; brought up to date by every change of the current scale, and by calculateVisibleLayers().
    [[nodiscard]] QList<int>& getVisibleLayers();
    void calculateVisibleLayers();

    // One single step of one scroll bar in the direction of the signs; y when dx is 0. Nothing when neither is 0.
    void scrollBy(double dx, double dy);

    // The cursor of the controller's mouse mode.
    void changeMouseCursor();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;

private:
    void setScaleAndLayers(double scale);
    void panTo(QPoint position);
    [[nodiscard]] QRectF rubberBandInScene() const;
    [[nodiscard]] QGraphicsItem* elementToSelectAt(QPoint position) const;
    void finishSelecting(QPoint position);
    void finishZooming(QPoint position);
    void paintByItems(QPaintEvent* event);

    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
