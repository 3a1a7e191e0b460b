// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/viewcanvas.h"
#include "graphics/quickpicture.h"
#include "graphics/scenepicture.h"
#include "graphics/statepictures.h"

#include <QPointer>

#include <functional>
#include <memory>
#include <utility>

class QGraphicsView;

namespace mirn::zelchipview {

class ZelGraphicsScene;

// Returns what a picture of the scene in this view looks like at any scale: all of ViewCanvas::Scene but which part it
// shows, its size, its layers and what lies behind the elements beside plain colours.
[[nodiscard]] ViewCanvas::Scene canvasScene(const QGraphicsView& view, ZelGraphicsScene& scene);

// One view's painting without Qt's items. It decides whether that is possible, collects what the picture depends on
// from the view, the scene and the controller, and schedules repaints of what has changed; the pixels themselves are in
// its ViewCanvases. It also holds the layers that the view shows. The view owns it.
class ViewPicture final : public ScenePicture
{
public:
    // Neither argument is owned. The view must outlive the picture; the scene may be null.
    ViewPicture(QGraphicsView& view, ZelGraphicsScene* scene);
    ~ViewPicture();
    ViewPicture(const ViewPicture&) = delete;
    ViewPicture& operator=(const ViewPicture&) = delete;

    // How many threads paint a picture with many elements.
    [[nodiscard]] int threads() const { return m_threads; }
    void setThreads(int count) { m_threads = count; }

    [[nodiscard]] QList<int>& visibleLayers() override { return m_visibleLayers; }
    void repaintPlaces(const std::vector<int>& places) override;
    void repaintAll() override;
    void repaintStates() override;
    void invalidateElements(const std::vector<int>& places) override;
    void forgetAll() override;

    // Returns whether this class can paint in place of Qt: the scene is plain, the painter is Qt's software renderer,
    // its device is scaled evenly and not rotated, and the viewport has an opaque background of one colour.
    [[nodiscard]] bool canPaintOn(const QPainter& painter) const;

    // Somebody has zoomed. After a user's gesture, the next paint on the screen may be approximate if an exact one
    // takes long. The exact picture follows by itself; `settled` is called when it is shown. isSettled() returns
    // whether it is.
    void noteZoom(bool isByUser);
    void whenSettled(std::function<void()> settled) { m_settled = std::move(settled); }
    [[nodiscard]] bool isSettled() const;

    // Returns whether a full repaint takes longer than the screen shows a picture.
    [[nodiscard]] bool isSlow() const { return m_quick && m_quick->isSlow(); }

    // The view has scrolled. Has it repaint what looks different now, beside what came into sight.
    void noteScroll();

    // Brings the picture up to date and draws at least the exposed parts of the viewport. The painter is left with the
    // scene's transform.
    void paint(QPainter& painter, const QRegion& exposed, const ViewCanvas::Background& drawBackground);

private:
    [[nodiscard]] ViewCanvas::Scene currentScene() const;
    [[nodiscard]] bool isOnScreen(const QPainter& painter) const;
    void makePictures();
    [[nodiscard]] bool isWorthKeeping(const ViewCanvas::Scene& scene) const;
    [[nodiscard]] bool paintOnScreen(const QPainter& painter, const ViewCanvas::Scene& scene);
    void drawKept(QPainter& painter, const QRegion& exposed, const ViewCanvas::Scene& scene);
    void updatePart(const QRegion& part);
    void exchange(std::unique_ptr<ViewCanvas>& next);

    // Where the picture's pixels are on the device, at the last paint.
    struct Device
    {
        qreal ratio = 1; // pixels for each unit of the viewport
        QPointF start; // the viewport's origin, which may lie between two pixels
    };

    QGraphicsView& m_view;
    const QPointer<ZelGraphicsScene> m_scene;
    std::unique_ptr<StatePictures> m_pictures; // created by the first paint
    std::unique_ptr<QuickPicture> m_quick; // created with it
    Device m_device;
    QTransform m_notKept; // with which the last picture was painted that was not kept
    ViewCanvas::Background m_drawBackground; // of the last paint
    QPen m_textPen; // of the last paint
    QFont m_font; // of the last paint
    std::function<void()> m_settled;
    QList<int> m_visibleLayers;
    int m_threads = 1;
};

} // namespace mirn::zelchipview
