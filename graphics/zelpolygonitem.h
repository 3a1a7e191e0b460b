// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/fillableitem.h"

#include <QGraphicsPolygonItem>

namespace mirn::zelchipview {

// A polygon of the drawing. It accepts drops and shows selection and highlight, but no filter and no border of its own.
// The scene owns it.
class ZELCHIPGUI_EXPORT ZELPolygonItem final : public FillableItem<QGraphicsPolygonItem>
{
public:
    explicit ZELPolygonItem(int id); // id: the load number
    ~ZELPolygonItem() override;

    // Always this kind.
    [[nodiscard]] zelgraphic_kind kind() const override { return ZEL_GRAPHIC_POLYGON; }

protected:
    // Returns fill and border as the paint rules have them for this kind.
    [[nodiscard]] paintrules::Look look(ElementStates states) const override;
    void dragEnterEvent(QGraphicsSceneDragDropEvent* event) override;
    void dragLeaveEvent(QGraphicsSceneDragDropEvent* event) override;
    void dropEvent(QGraphicsSceneDragDropEvent* event) override;
};

} // namespace mirn::zelchipview
