// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/zelviewlayer.h"
#include "planning/siteplaces.h"
#include "platform/contract/zelexport.h"

#include <QPixmap>

#include <vector>

class QColor;
class QRectF;

namespace mirn::zelchipview {

class ZelGraphicsScene;

// Marks elements, such as the sites of locked resources, by a small padlock in their top right corner. An element that
// is too small on the screen, or on a hidden layer, has none; where very many are in sight, only large ones have it. It
// knows no engine: the host says which elements they are.
class ZELCHIPGUI_EXPORT LockLayer final : public ZelViewLayer
{
    Q_OBJECT
public:
    // The view becomes the owner; see ZelViewLayer.
    explicit LockLayer(QGraphicsView* view);
    ~LockLayer() override;

    // Sets the ids of the elements that have a padlock; those that the drawing does not have are ignored. Call it again
    // after another drawing was loaded.
    void setElements(const std::vector<int>& ids);
    [[nodiscard]] const std::vector<int>& elements() const { return m_ids; }

    void paint(QPainter& painter, const QRect& exposed) override;

    // Paints the mark itself, a padlock that fills the height of the area, in one colour: for other places that show
    // what is locked.
    static void paintPadlock(QPainter& painter, const QRectF& area, const QColor& color);

private:
    [[nodiscard]] double smallestMarkedSide(ZelGraphicsScene& scene) const;
    [[nodiscard]] const QPixmap& badge(int size, double pixelRatio);

    std::vector<int> m_ids;
    std::vector<SitePlace> m_places;
    QPixmap m_badge;
};

} // namespace mirn::zelchipview
