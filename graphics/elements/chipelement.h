// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/paintrules.h"
#include "graphics/zelgraphicitemattribute.h"
#include "platform/contract/zelgraphicrecords.h"

#include <QGraphicsItem>

#include <optional>

class QGraphicsScene;
class QGraphicsSceneDragDropEvent;

namespace mirn::zelchipview {

// The base of the four item classes: the load number, the attribute behind it, and the notifications to the scene that
// holds the item. It holds no drawing values and owns nothing.
class ZELCHIPGUI_EXPORT ChipElement
{
public:
    virtual ~ChipElement();
    ChipElement(const ChipElement&) = delete;
    ChipElement& operator=(const ChipElement&) = delete;

    // The number under which the controller stores the attribute; it is not the element id.
    [[nodiscard]] int loadNumber() const { return m_loadNumber; }

    // Returns the attribute, which the controller owns, or null if none was registered under the load number at
    // construction. To change it, get it from the controller.
    [[nodiscard]] const ZELGraphicItemAttribute* attribute() const { return m_attribute; }

    // Returns the value that the attribute serves under `key`, or a default-constructed one. `Value` must be the key's
    // type.
    template <typename Value> [[nodiscard]] Value value(zelgraphic_attribute_key key) const
    {
        const void* data = m_attribute ? m_attribute->getAttribute(key) : nullptr;
        return data ? *static_cast<const Value*>(data) : Value();
    }

    // Returns the kind that the item draws. It may differ from the attribute's kind, which is none until a record is
    // set.
    [[nodiscard]] virtual zelgraphic_kind kind() const = 0;

    // Returns this object as a graphics item; never null.
    [[nodiscard]] virtual QGraphicsItem* graphicsItem() = 0;

    // Takes over from the attribute what decides where the item is found: geometry and border. Returns whether anything
    // changed; if not, no repaint is scheduled.
    virtual bool synchronise(ElementStates states) = 0;

    // Sets the fill that paint() would set, so that a host can read it from the item. Kinds without a fill do nothing.
    // The call is expensive among many items, because Qt looks for the item among all others.
    virtual void updateBrush(ElementStates) { }

    // Returns whether the item waits for its layer to be shown before it takes over its geometry or tooltip.
    [[nodiscard]] bool isPending() const { return m_isPending; }

    // Sets the item's tooltip to the attribute's if the element's layer is shown.
    void updateToolTip();

    // Does the same without asking for the layer. The element must have an attribute.
    void takeOverToolTip();

protected:
    // When an item takes over its geometry: at construction, or when its layer is first shown.
    enum class Placing { AtOnce, WhenShown };

    // Looks up the attribute; that happens only here.
    ChipElement(int loadNumber, Placing placing);

    // Returns the element's states, or nothing while the element is pending or its layer is hidden, because no paint
    // has touched the item then.
    [[nodiscard]] std::optional<ElementStates> shownStates() const;

    // The first step of every paint. Returns false if the element's layer is hidden. Otherwise it brings the tooltip,
    // geometry and border up to date and returns the element's states in `states`.
    [[nodiscard]] bool prepareToPaint(ElementStates& states);

    // These keep the scene's index of elements up to date. itemChange() and the destructor call them.
    void noticeChange(QGraphicsItem::GraphicsItemChange change);
    void leaveScene(QGraphicsScene* scene);

    // acceptDragIfAllowed() ignores the drag event if the dragged resource may not be dropped here, and returns whether
    // it may. dropHere() places the resource.
    bool acceptDragIfAllowed(QGraphicsSceneDragDropEvent* event) const;
    void dropHere() const;

private:
    friend class DisplayList;
    friend class ElementIndex;

    // A static data member would become a symbol that keeps the library loaded; an enumerator does not.
    enum : int { Nowhere = -1 };

    void enterScene(QGraphicsScene* scene);

    const int m_loadNumber;
    int m_slot = Nowhere; // index in the scene's ElementIndex
    ZELGraphicItemAttribute* const m_attribute;
    int m_place = Nowhere; // index in the scene's DisplayList
    bool m_isPending;
};

} // namespace mirn::zelchipview
