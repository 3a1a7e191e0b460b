// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/chipelement.h"

#include <QGraphicsTextItem>
#include <QRectF>

namespace mirn::zelchipview {

// A text of the drawing, drawn with its base line through the item's origin. It is never selected, and a drag or drop
// on it only ends a highlight. It looks the same in every state. The scene owns it.
//
// The item has no extent until it is shown. The text document of the base class is many times larger in memory than the
// rest of the item, so it is created only when it is asked for, when the item paints itself or receives an event, or
// when the scene has few texts. Until then the item computes the size that the document would have.
class ZELCHIPGUI_EXPORT ZELTextItem final : public QGraphicsTextItem, public ChipElement
{
    Q_OBJECT
public:
    explicit ZELTextItem(int id); // id: the load number, whose attribute must be registered
    ~ZELTextItem() override;

    // Covers the document and the glyphs, which are drawn above the document's rectangle.
    [[nodiscard]] QRectF boundingRect() const override;

    // Both use the document's rectangle.
    [[nodiscard]] QPainterPath shape() const override;
    [[nodiscard]] bool contains(const QPointF& point) const override;

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget = nullptr) override;

    // These return what paint() uses. The functions of the base class that they hide return no values of the drawing
    // until there is a document.
    [[nodiscard]] QString toPlainText() const;
    [[nodiscard]] QFont font() const;
    [[nodiscard]] QColor defaultTextColor() const;
    [[nodiscard]] QTextDocument* document() const;

    [[nodiscard]] zelgraphic_kind kind() const override { return ZEL_GRAPHIC_TEXT; }
    [[nodiscard]] QGraphicsItem* graphicsItem() override { return this; }
    bool synchronise(ElementStates states) override;

protected:
    QVariant itemChange(GraphicsItemChange change, const QVariant& value) override;
    bool sceneEvent(QEvent* event) override;
    void dragEnterEvent(QGraphicsSceneDragDropEvent* event) override;
    void dropEvent(QGraphicsSceneDragDropEvent* event) override;

private:
    // The values last taken over from the attribute.
    struct Shown
    {
        QString text;
        QString family;
        double fontSize = 0.0;
        int rotation = 0;
        unsigned int color = 0;
    };

    [[nodiscard]] bool isUpToDate() const;
    [[nodiscard]] bool isAmongFewTexts() const;
    [[nodiscard]] QFont textFont() const;
    [[nodiscard]] QRectF documentRect() const;
    void measure() const;
    void makeDocument();
    void fillDocument();

    Shown m_shown;
    bool m_isShown = false;
    bool m_hasDocument = false;
    mutable QRectF m_documentRect; // item coordinates; both are null until they are measured
    mutable QRectF m_glyphRect;
};

} // namespace mirn::zelchipview
