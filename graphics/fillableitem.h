// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/chipelement.h"

#include <QBrush>
#include <QGraphicsItem>
#include <QPen>

#include <optional>

namespace mirn::zelchipview {

// What the items of rects and polygons share: a fill and a border that follow from the attribute's values and the
// element's states. `Base` is Qt's item of that shape.
template <typename Base> class FillableItem : public Base, public ChipElement
{
public:
    [[nodiscard]] QRectF boundingRect() const override { return Base::boundingRect(); }

    void paint(QPainter* painter, const QStyleOptionGraphicsItem* option, QWidget* widget = nullptr) override
    {
        ElementStates states;
        if (!prepareToPaint(states))
            return;
        updateBrush(states);
        Base::paint(painter, option, widget);
    }

    [[nodiscard]] QGraphicsItem* graphicsItem() override { return this; }

    bool synchronise(ElementStates states) override
    {
        const QPen border = paintrules::borderPen(look(states));
        if (border == Base::pen())
            return false;
        this->setPen(border);
        return true;
    }

    void updateBrush(ElementStates states) override { this->setBrush(paintrules::fillBrush(look(states))); }

    // These return what paint() would use now. The functions of the base class that they hide may return an earlier
    // state.
    [[nodiscard]] QPen pen() const
    {
        const std::optional<ElementStates> states = shownStates();
        return states ? paintrules::borderPen(look(*states)) : Base::pen();
    }
    [[nodiscard]] QBrush brush() const
    {
        const std::optional<ElementStates> states = shownStates();
        return states ? paintrules::fillBrush(look(*states)) : Base::brush();
    }

protected:
    explicit FillableItem(int loadNumber)
        : ChipElement(loadNumber, Placing::AtOnce)
    {
        this->setAcceptDrops(true);
    }

    // Returns the fill and border of the element in these states.
    [[nodiscard]] virtual paintrules::Look look(ElementStates states) const = 0;

    QVariant itemChange(QGraphicsItem::GraphicsItemChange change, const QVariant& value) override
    {
        noticeChange(change);
        return Base::itemChange(change, value);
    }
};

} // namespace mirn::zelchipview
