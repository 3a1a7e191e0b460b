// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/chipelement.h"

#include <QGraphicsTextItem>
#include <QRectF>

namespace mirn::zelchipview {

// A text of the drawing, drawn with its base line through the item's origin. Never selected, and a drag or drop on it
// only ends a highlight. Looks the same in every state.
//
// Takes up no room until it is shown. The text document of the base class, many times larger than the rest of the item,
// is made only when it is asked for, when the item paints itself or gets an event, or where there are few texts; until
// then the item computes what the document would measure.
class ZELCHIPGUI_EXPORT ZELTextItem final : public QGraphicsTextItem, public ChipElement
{
    Q_OBJECT
public:
    explicit ZELTextItem(int id); // id: the load number, whose attribute must be registered
    ~ZELTextItem() override;

    // Also covers the glyphs, which stand above the document's own rectangle.
    [[nodiscard]] QRectF boundingRect() const override;

    // The document's rectangle.
    [[nodiscard]] QPainterPath shape() const override;
    [[nodiscard]] bool contains(const QPointF& point) const override;

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget = nullptr) override;

    // What paint() sets. Qt's own functions of these names, called through a base class, know nothing while there is no
    // document.
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
    // What the item shows, as it was last taken over from the attribute.
    struct Shown
    {
        QString text;
        QString family;
        double fontSize = 0.0;
        int rotation = 0;
        unsigned int color = 0;
    };

    [[nodiscard]] bool isUpToDate() const;
    [[nodiscard]] QFont textFont() const;
    [[nodiscard]] QRectF documentRect() const;
    void measure() const;
    void makeDocument();
    void fillDocument();

    Shown m_shown;
    bool m_isShown = false;
    bool m_hasDocument = false;
    mutable QRectF m_documentRect; // item coordinates; both null until asked for
    mutable QRectF m_glyphRect;
};

} // namespace mirn::zelchipview
