// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/paintrules.h"
#include "platform/contract/zelexport.h"

#include <QGraphicsScene>

namespace mirn::zelchipview {

class ChipElement;

// The interface that an element needs of the scene that holds it. ZelGraphicsScene implements it.
class ZELCHIPGUI_EXPORT ChipScene : public QGraphicsScene
{
    Q_OBJECT
public:
    using QGraphicsScene::QGraphicsScene;
    ~ChipScene() override;

    [[nodiscard]] virtual bool isLayerVisible(int layer) = 0;
    [[nodiscard]] virtual ElementStates statesOf(int id) const = 0;

    // Returns whether the scene has so few texts that the memory of their documents does not matter.
    [[nodiscard]] virtual bool hasFewTexts() const = 0;

    // An element entered the scene, is about to leave it, has a new z value, or has a new position or property that
    // only Qt's own painting respects.
    virtual void elementEntered(ChipElement* element) = 0;
    virtual void elementLeaves(ChipElement* element) = 0;
    virtual void elementRestacked(ChipElement* element) = 0;
    virtual void elementChanged(ChipElement* element) = 0;
};

} // namespace mirn::zelchipview
