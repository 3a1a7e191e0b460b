// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/chipelement.h"

#include <QGraphicsPolygonItem>

namespace mirn::zelchipview {

// A polygon of the drawing. It accepts drops and shows selection and highlight, but no filter and no border of its own.
// The scene owns it.
class ZELCHIPGUI_EXPORT ZELPolygonItem final : public QGraphicsPolygonItem, public ChipElement
{
public:
    explicit ZELPolygonItem(int id); // id: the load number
    ~ZELPolygonItem() override;

    [[nodiscard]] QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget = nullptr) override;

    [[nodiscard]] zelgraphic_kind kind() const override { return ZEL_GRAPHIC_POLYGON; }
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
};

} // namespace mirn::zelchipview
