// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/chipelement.h"

#include <QGraphicsRectItem>

namespace mirn::zelchipview {

// A rect of the drawing; chip sites are rects. The only kind that selects itself and asks for the probable placements
// while a drag passes over it.
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
    void showFill(ElementStates states) override;

    // What paint() would set. Qt's own functions of these names, called through a base class, may tell of a state
    // before.
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
