// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/basenavigator.h"
#include "platform/contract/zelexport.h"

#include <memory>

namespace mirn::zelchipview {

class ZelGraphicsView;

// Zooms and scrolls the chip view in answer to navigation gestures. It is a child of the view.
class ZELCHIPGUI_EXPORT ChipViewNavigator : public BaseNavigator
{
    Q_OBJECT
public:
    // Install it as an event filter on the view and on its scene.
    explicit ChipViewNavigator(ZelGraphicsView* view);
    ~ChipViewNavigator() override;

    // `target` is ignored. A count of 0 or less does not zoom.
    void updateView(QObject* target, BaseNavigator::Navigating how, int count) override;

    // Does nothing: rectangles are not followed.
    void updateView(QObject* target, BaseNavigator::Navigating how, QRectF area) override;

private:
    struct Q_DECL_HIDDEN Parts;
    const std::unique_ptr<Parts> m_parts;
};

} // namespace mirn::zelchipview
