// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/viewcanvas.h"
#include "graphics/scenepicture.h"

#include <QPointer>

#include <memory>

class QGraphicsView;

namespace mirn::zelchipview {

class ZelGraphicsScene;

// Returns what a picture of the scene in this view looks like at any scale: all of ViewCanvas::Scene but which part it
// shows, its size, its layers and what lies behind the elements beside plain colours.
[[nodiscard]] ViewCanvas::Scene canvasScene(const QGraphicsView& view, ZelGraphicsScene& scene);

// One view's painting without Qt's items. It decides whether that is possible, collects what the picture depends on
// from the view, the scene and the controller, and schedules repaints of what has changed; the pixels themselves are in
// its ViewCanvas. It also holds the layers that the view shows. The view owns it.
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
    void invalidateElements(const std::vector<int>& places) override;
    void forgetAll() override;

    // Returns whether this class can paint in place of Qt: the scene is plain, the painter is Qt's software renderer,
    // its device is scaled evenly and not rotated, and the viewport has an opaque background of one colour.
    [[nodiscard]] bool canPaintOn(const QPainter& painter) const;

    // Brings the picture up to date and draws at least the exposed parts of the viewport. The painter is left with the
    // scene's transform.
    void paint(QPainter& painter, const QRegion& exposed, const ViewCanvas::Background& drawBackground);

private:
    QGraphicsView& m_view;
    const QPointer<ZelGraphicsScene> m_scene;
    std::unique_ptr<ViewCanvas> m_canvas; // created by the first paint
    QList<int> m_visibleLayers;
    int m_threads = 1;
};

} // namespace mirn::zelchipview
