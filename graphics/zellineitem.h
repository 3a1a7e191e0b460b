// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/chipelement.h"

#include <QGraphicsLineItem>

namespace mirn::zelchipview {

// A line of the drawing. It takes over its geometry from the attribute when its layer is first shown; until then it is
// an empty line at the origin. It looks the same in every state. The scene owns it.
class ZELCHIPGUI_EXPORT ZELLineItem final : public QGraphicsLineItem, public ChipElement
{
public:
    explicit ZELLineItem(int id); // id: the load number
    ~ZELLineItem() override;

    [[nodiscard]] QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget = nullptr) override;

    [[nodiscard]] zelgraphic_kind kind() const override { return ZEL_GRAPHIC_LINE; }
    [[nodiscard]] QGraphicsItem* graphicsItem() override { return this; }
    bool synchronise(ElementStates states) override;

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;
    void dragEnterEvent(QGraphicsSceneDragDropEvent* event) override;
    void dragLeaveEvent(QGraphicsSceneDragDropEvent* event) override;
    void dropEvent(QGraphicsSceneDragDropEvent* event) override;
};

} // namespace mirn::zelchipview
