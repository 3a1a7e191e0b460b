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

// What the four item classes share: the load number, the attribute behind it, and the places where an item meets its
// scene. Holds no drawing values.
class ZELCHIPGUI_EXPORT ChipElement
{
public:
    virtual ~ChipElement();
    ChipElement(const ChipElement&) = delete;
    ChipElement& operator=(const ChipElement&) = delete;

    // Finds the attribute; not the element id.
    [[nodiscard]] int loadNumber() const { return m_loadNumber; }

    // The controller's; null when nothing was registered under the load number at construction. To change it, get it
    // from the controller.
    [[nodiscard]] const ZELGraphicItemAttribute* attribute() const { return m_attribute; }

    // The value that the attribute serves under `key`, or a default-constructed one.
    template <typename Value> [[nodiscard]] Value value(zelgraphic_attribute_key key) const
    {
        const void* data = m_attribute ? m_attribute->getAttribute(key) : nullptr;
        return data ? *static_cast<const Value*>(data) : Value();
    }

    // What the item draws. Its attribute, when no record was set on it, is of no kind.
    [[nodiscard]] virtual zelgraphic_kind kind() const = 0;

    // The item itself; never null.
    [[nodiscard]] virtual QGraphicsItem* graphicsItem() = 0;

    // Takes over from the attribute what decides where the item is found: geometry and border. Changes nothing, and so
    // schedules no repaint, when all is right. Returns whether it did.
    virtual bool synchronise(ElementStates states) = 0;

    // The item itself tells the fill that its paint would set. Has Qt look for the item among all others.
    virtual void showFill(ElementStates) { }

    // Whether the item waits for its layer to be shown before it takes over its geometry or its tooltip.
    [[nodiscard]] bool isPending() const { return m_isPending; }

    // The item shows the attribute's present tooltip if its layer is shown.
    void updateToolTip();

protected:
    // When an item takes over its geometry: at its construction, or when its layer is first shown.
    enum class Placing { AtOnce, WhenShown };

    // Looks the attribute up, once and for all.
    ChipElement(int loadNumber, Placing placing);

    // None while the element's layer is hidden: no paint would touch the item.
    [[nodiscard]] std::optional<ElementStates> shownStates() const;

    // The first step of every paint: false when the element's layer is hidden. Otherwise the item has its tooltip, its
    // geometry and its border, and `states` are the element's.
    [[nodiscard]] bool prepareToPaint(ElementStates& states);

    // Keep the scene's index of elements up to date; to be called by itemChange() and the destructor.
    void noticeChange(QGraphicsItem::GraphicsItemChange change);
    void leaveScene(QGraphicsScene* scene);

    // Refuses the drag when the dragged resource may not be dropped here. Returns whether it may.
    bool acceptDragIfAllowed(QGraphicsSceneDragDropEvent* event) const;
    void dropHere() const;

private:
    friend class DisplayList;
    friend class ElementIndex;

    // No static member: referred to from the library's code, it would be a symbol that keeps the library loaded.
    enum : int { Nowhere = -1 };

    void enterScene(QGraphicsScene* scene);

    const int m_loadNumber;
    int m_slot = Nowhere; // in the scene's index
    ZELGraphicItemAttribute* const m_attribute;
    int m_place = Nowhere; // in the scene's display list
    bool m_isPending;
    bool m_isWatched = false; // by the scene's index, for changes of the attribute
};

} // namespace mirn::zelchipview
