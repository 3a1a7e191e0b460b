// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/chipelement.h"

#include <QGraphicsRectItem>

namespace mirn::zelchipview {

// A rect of the drawing; chip sites are rects. It is the only kind that selects itself, and asks for the probable
// placement sites, while a drag passes over it. The scene owns it.
class ZELCHIPGUI_EXPORT ZELRectItem final : public QGraphicsRectItem, public ChipElement
{
public:
    explicit ZELRectItem(int id); // id: the load number
    ~ZELRectItem() override;

    [[nodiscard]] QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget = nullptr) override;

    [[nodiscard]] zelgraphic_kind kind() const override { return ZEL_GRAPHIC_RECT; }
    [[nodiscard]] QGraphicsItem* graphicsItem() override { return this; }
    bool synchronise(ElementStates states) override;
    void updateBrush(ElementStates states) override;

    // These return what paint() would use now. The functions of the base class that they hide may return an earlier
    // state.
    [[nodiscard]] QPen pen() const;
    [[nodiscard]] QBrush brush() const;

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;
    void dragEnterEvent(QGraphicsSceneDragDropEvent* event) override;
    void dragLeaveEvent(QGraphicsSceneDragDropEvent* event) override;
    void dropEvent(QGraphicsSceneDragDropEvent* event) override;

private:
    [[nodiscard]] paintrules::Look look(ElementStates states) const;
    void deselect() const;
};

} // namespace mirn::zelchipview
