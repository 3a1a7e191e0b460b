// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/basenavigator.h"
#include "platform/contract/zelexport.h"

#include <QPointer>

namespace mirn::zelchipview {

class ZelGraphicsView;

// Answers navigation gestures by zooming and scrolling the chip view. Child of the view.
class ZELCHIPGUI_EXPORT ChipViewNavigator : public BaseNavigator
{
    Q_OBJECT
public:
    // To be installed as event filter on the view and on its scene.
    explicit ChipViewNavigator(ZelGraphicsView* view);
    ~ChipViewNavigator() override;

    // `target` does not matter; a count of 0 or less zooms nothing.
    void updateView(QObject* target, BaseNavigator::Navigating how, int count) override;

    // Rectangles are not followed.
    void updateView(QObject* target, BaseNavigator::Navigating how, QRectF area) override;

private:
    QPointer<ZelGraphicsView> m_view;
};

} // namespace mirn::zelchipview
