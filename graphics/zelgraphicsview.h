// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QGraphicsView>
#include <QList>

#include <functional>
#include <memory>

namespace mirn::zelchipview {

// The view of the chip scene. It zooms in steps between the drawing's limits, decides from the scale which layers are
// shown, and selects, zooms or pans with the mouse according to the controller's mouse mode. The window owns it; it
// does not own the scene.
//
// One zoom step multiplies the transform by (1 + step) and adds step to the current scale, the value that the layer
// ranges are compared with.
class ZELCHIPGUI_EXPORT ZelGraphicsView : public QGraphicsView
{
    Q_OBJECT
public:
    // `scene` should be a ZelGraphicsScene. With any other scene the view behaves like a QGraphicsView and does not
    // zoom.
    ZelGraphicsView(QGraphicsScene* scene, QWidget* parent);
    ~ZelGraphicsView() override;

    // setCurrentScale() multiplies the transform by `scale` (> 0) and makes it the current scale, ignoring the limits.
    void setCurrentScale(double scale);
    [[nodiscard]] double currentScale() const;

    // These zoom by one step, or do nothing if the step would leave the drawing's limits.
    void zoomIn();
    void zoomOut();

    // Undoes getScaleTimes() whole zoom steps, so that the transform is close to 1, and sets the current scale to the
    // drawing's initial scale.
    void zoomFit();

    // Returns the number of whole zoom steps between the transform and 1, rounded towards 0; negative when zoomed out.
    [[nodiscard]] int getScaleTimes() const;

    // Fits the united bounding rectangle of the items into the view, ignoring the limits. Null stands for the scene's
    // zoom items. Nothing happens if the list is empty or begins with null.
    void zoomTo(QList<QGraphicsItem*>* items);

    // The visible layers in ascending order. Every change of the current scale updates them, and so does
    // calculateVisibleLayers().
    [[nodiscard]] QList<int>& getVisibleLayers();
    void calculateVisibleLayers();

    // Scrolls by one single step of a scroll bar: vertically if dx is 0 (upwards if dy is negative), else horizontally
    // if dy is 0 (to the left if dx is negative). Nothing happens if neither is 0.
    void scrollBy(double dx, double dy);

    // Runs `zoom`, which zooms this view for a gesture of its user; the navigator does so for each turn of the wheel.
    // In a drawing that takes longer to paint than the screen to show the next frame, the next paint on the screen may
    // then be approximate: the last picture, scaled. The exact one is painted in slices between the user's events.
    // isExact() tells whether the screen shows it, or will with the next paint, and becameExact() is emitted when it
    // does. Pictures that a host asks for (grab(), render()), and the paint after any other change, are always exact.
    void zoomApproximately(const std::function<void()>& zoom);
    [[nodiscard]] bool isExact() const;

    // How many threads paint a picture with many elements, that of the paint event included: 1 unless the host sets
    // more. The others begin and end within the paint event, or wait between two slices (see zoomApproximately()) and
    // end with the last. They touch pixels and nothing of the host's or Qt's. A number below 1 counts as 1.
    void setPaintThreads(int count);
    [[nodiscard]] int paintThreads() const;

    // Sets the cursor of the controller's mouse mode.
    void changeMouseCursor();

Q_SIGNALS:
    // After approximate paints, the view shows the exact picture.
    void becameExact();

protected:
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void mouseDoubleClickEvent(QMouseEvent* event) override;
    void contextMenuEvent(QContextMenuEvent* event) override;
    void dragLeaveEvent(QDragLeaveEvent* event) override;
    void focusOutEvent(QFocusEvent* event) override;
    void paintEvent(QPaintEvent* event) override;
    // Also repaints what a scroll changes beside what comes into sight.
    void scrollContentsBy(int dx, int dy) override;

private:
    void setScaleAndLayers(double scale);
    void panTo(QPoint position);
    [[nodiscard]] QRectF rubberBandInScene() const;
    [[nodiscard]] QGraphicsItem* elementToSelectAt(QPoint position) const;
    void finishSelecting(QPoint position);
    void finishZooming(QPoint position);
    void paintByItems(QPaintEvent* event);
    void paintLayers(QPainter& painter, const QRect& exposed);

    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
