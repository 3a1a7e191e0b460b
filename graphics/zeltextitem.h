// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/chipelement.h"

#include <QGraphicsTextItem>
#include <QRectF>

namespace mirn::zelchipview {

// A text of the drawing, drawn with its base line through the item's origin. Never selected, and a drag or drop on it
// only ends a highlight. Looks the same in every state.
class ZELCHIPGUI_EXPORT ZELTextItem final : public QGraphicsTextItem, public ChipElement
{
    Q_OBJECT
public:
    explicit ZELTextItem(int id); // id: the load number, whose attribute must be registered
    ~ZELTextItem() override;

    // Also covers the glyphs, which stand above the document's own rectangle.
    [[nodiscard]] QRectF boundingRect() const override;
    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget = nullptr) override;

    [[nodiscard]] QGraphicsItem* graphicsItem() override { return this; }
    void synchronise(ElementStates states) override;

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;
    void dragEnterEvent(QGraphicsSceneDragDropEvent* event) override;
    void dropEvent(QGraphicsSceneDragDropEvent* event) override;

private:
    [[nodiscard]] QFont textFont() const;

    QString m_shownText; // as it was set: the document rewrites some characters
    QRectF m_glyphRect; // item coordinates
};

} // namespace mirn::zelchipview
