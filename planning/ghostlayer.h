// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelviewlayer.h"
#include "platform/contract/zelplanengine.h"

#include <QPainterPath>
#include <QString>
#include <QTransform>

#include <vector>

namespace mirn::zelchipview {

class DragWatch;
class ZelGraphicsView;

// Shows, while a resource is dragged over the drawing, all sites that it would take if it were dropped now, with the
// names of the parts that go there. A site that the drawing does not have shows nothing.
class ZELCHIPGUI_EXPORT GhostLayer final : public ZelViewLayer
{
    Q_OBJECT
public:
    // Follows the watch, which must be of the same view.
    GhostLayer(ZelGraphicsView* view, const DragWatch* watch);
    ~GhostLayer() override;

    // Shows these placements instead of what was shown; none clears the layer.
    void showPlacements(const std::vector<zelplacement>& placements);

    void paint(QPainter& painter, const QRect& exposed) override;

private:
    struct Ghost
    {
        QString name; // of the part
        QPainterPath outline; // of the site, in scene coordinates
    };

    void repaintGhosts();
    [[nodiscard]] std::vector<QRectF> outlinesInPixels() const;

    std::vector<zelplacement> m_placements;
    std::vector<Ghost> m_ghosts;
    QTransform m_transform; // of the view when the ghosts were last shown
};

} // namespace mirn::zelchipview
