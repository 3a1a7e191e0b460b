// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/painting/viewcanvas.h"
#include "graphics/scenepicture.h"
#include "graphics/statepictures.h"

#include <QPointer>

#include <functional>
#include <memory>

namespace mirn::zelchipview {

class ZelGraphicsScene;
class ZelGraphicsView;

// A small picture of all that a view could show, with the layers that the view has when the whole drawing fits into it.
// It is kept, and what changed is painted anew, when its owner calls update(). Texts that nobody could read are left
// out, and so are items of a host. It paints from the display list whether or not the view does.
class OverviewPicture final : public ScenePicture
{
public:
    // `outdated` is called when something may have changed; it must not paint. The view must outlive the picture, and
    // shows the same scene meanwhile.
    OverviewPicture(ZelGraphicsView& view, std::function<void()> outdated);
    ~OverviewPicture();
    OverviewPicture(const OverviewPicture&) = delete;
    OverviewPicture& operator=(const OverviewPicture&) = delete;

    // Whether there is anything to show: a chip scene with an extent.
    [[nodiscard]] bool hasDrawing() const;

    // What it shows, in scene coordinates.
    [[nodiscard]] QRectF area() const;

    // How many times larger the view shows the drawing now than when all of it fits.
    [[nodiscard]] double magnification() const;

    // Paints a part of what is out of date, in a picture of `size` pixels. Needs a drawing.
    [[nodiscard]] ViewCanvas::Work update(QSize size, const QDeadlineTimer& deadline);

    // Draws the picture with its top left corner at `position`; a unit of the painter is `ratio` pixels. Nothing is
    // drawn before the first update().
    void drawOn(QPainter& painter, const QPointF& position, qreal ratio) const;

    [[nodiscard]] QList<int>& visibleLayers() override { return m_layers; }
    void repaintPlaces(const std::vector<int>& places) override;
    void repaintAll() override;
    void repaintStates() override;
    void invalidateElements(const std::vector<int>& places) override;
    void forgetAll() override;

private:
    [[nodiscard]] QRectF shownArea() const;
    [[nodiscard]] QList<int> layersAtFit() const;

    ZelGraphicsView& m_view;
    const QPointer<ZelGraphicsScene> m_scene;
    const std::function<void()> m_outdated;
    std::unique_ptr<StatePictures> m_pictures; // created by the first update
    QList<int> m_layers;
};

} // namespace mirn::zelchipview
