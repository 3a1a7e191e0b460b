// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/fillableitem.h"

#include <QGraphicsRectItem>

namespace mirn::zelchipview {

// A rect of the drawing; chip sites are rects. It is the only kind that selects itself, and asks for the probable
// placement sites, while a drag passes over it. The scene owns it.
class ZELCHIPGUI_EXPORT ZELRectItem final : public FillableItem<QGraphicsRectItem>
{
public:
    explicit ZELRectItem(int id); // id: the load number
    ~ZELRectItem() override;

    // Always this kind.
    [[nodiscard]] zelgraphic_kind kind() const override { return ZEL_GRAPHIC_RECT; }

protected:
    // Returns fill and border as the paint rules have them for this kind.
    [[nodiscard]] paintrules::Look look(ElementStates states) const override;
    void dragEnterEvent(QGraphicsSceneDragDropEvent* event) override;
    void dragLeaveEvent(QGraphicsSceneDragDropEvent* event) override;
    void dropEvent(QGraphicsSceneDragDropEvent* event) override;

private:
    void deselect() const;
};

} // namespace mirn::zelchipview
