// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/paintrules.h"
#include "graphics/zelgraphicitemattribute.h"

class QGraphicsItem;
class QGraphicsScene;
class QGraphicsSceneDragDropEvent;

namespace mirn::zelchipview {

class ZelGraphicsScene;

// What the four item classes share: the load number, the attribute behind it, and the places where an item meets its
// scene. Holds no drawing values.
class ZELCHIPGUI_EXPORT ChipElement
{
public:
    virtual ~ChipElement();
    ChipElement(const ChipElement&) = delete;
    ChipElement& operator=(const ChipElement&) = delete;

    [[nodiscard]] int loadNumber() const { return m_loadNumber; }

    // The controller's; null when nothing was registered under the load number at construction.
    [[nodiscard]] ZELGraphicItemAttribute* attribute() const { return m_attribute; }

    [[nodiscard]] virtual QGraphicsItem* graphicsItem() = 0;

    // Takes over geometry and look from the attribute. Changes nothing, and so schedules no repaint, when all is right.
    virtual void synchronise(ElementStates states) = 0;

protected:
    explicit ChipElement(int loadNumber);

    // The value that the attribute serves under `key`, or a default-constructed one.
    template <typename Value> [[nodiscard]] Value value(zelgraphic_attribute_key key) const
    {
        const void* data = m_attribute ? m_attribute->getAttribute(key) : nullptr;
        return data ? *static_cast<const Value*>(data) : Value();
    }

    // The first step of every paint: false when the element's layer is hidden. Otherwise the item has its tooltip and
    // its present look.
    [[nodiscard]] bool prepareToPaint();

    // Keep the scene's index of elements up to date; to be called by itemChange() and the destructor.
    void enterScene(QGraphicsScene* scene);
    void leaveScene(QGraphicsScene* scene);

    // Refuses the drag when the dragged resource may not be dropped here. Gives whether it may.
    bool acceptDragIfAllowed(QGraphicsSceneDragDropEvent* event) const;
    void dropHere() const;

private:
    const int m_loadNumber;
    ZELGraphicItemAttribute* const m_attribute;
};

} // namespace mirn::zelchipview
