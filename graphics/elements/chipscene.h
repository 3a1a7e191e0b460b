// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/paintrules.h"
#include "platform/contract/zelexport.h"

#include <QGraphicsScene>

namespace mirn::zelchipview {

class ChipElement;

// What an element needs of the scene that holds it: ZelGraphicsScene.
class ZELCHIPGUI_EXPORT ChipScene : public QGraphicsScene
{
    Q_OBJECT
public:
    using QGraphicsScene::QGraphicsScene;
    ~ChipScene() override;

    [[nodiscard]] virtual bool isLayerVisible(int layer) = 0;
    [[nodiscard]] virtual ElementStates statesOf(int id) const = 0;

    // Whether the documents of all texts together take memory that is not felt.
    [[nodiscard]] virtual bool hasFewTexts() const = 0;

    // An element came, is about to leave, has another z value, or has another position or property that only Qt's own
    // painting respects.
    virtual void elementEntered(ChipElement* element) = 0;
    virtual void elementLeaves(ChipElement* element) = 0;
    virtual void elementRestacked(ChipElement* element) = 0;
    virtual void elementChanged(ChipElement* element) = 0;
};

} // namespace mirn::zelchipview
