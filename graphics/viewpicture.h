// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/viewcanvas.h"
#include "graphics/scenepicture.h"

#include <QPointer>

#include <memory>

class QGraphicsView;

namespace mirn::zelchipview {

class ZelGraphicsScene;

// The picture of the chip scene in a view: which layers it shows, what of it is out of date, and the painting that does
// without Qt's items.
class ViewPicture final : public ScenePicture
{
public:
    // Neither is owned. The view must exist as long as the picture; the scene may be null.
    ViewPicture(QGraphicsView& view, ZelGraphicsScene* scene);
    ~ViewPicture();
    ViewPicture(const ViewPicture&) = delete;
    ViewPicture& operator=(const ViewPicture&) = delete;

    [[nodiscard]] QList<int>& visibleLayers() override { return m_visibleLayers; }
    void repaintPlaces(const std::vector<int>& places) override;
    void repaintAll() override;
    void forgetPlaces(const std::vector<int>& places) override;
    void forgetAll() override;

    // Whether the view shows the drawing as it was loaded, upright, on a widget or an image of Qt's software renderer.
    // All else is left to Qt, item by item.
    [[nodiscard]] bool canPaintOn(const QPainter& painter) const;

    // Brings the picture up to date and draws it. The painter has its transform for the scene then.
    void paint(QPainter& painter, const ViewCanvas::Background& drawBackground);

private:
    QGraphicsView& m_view;
    const QPointer<ZelGraphicsScene> m_scene;
    std::unique_ptr<ViewCanvas> m_canvas; // made with the first paint
    QList<int> m_visibleLayers;
};

} // namespace mirn::zelchipview
