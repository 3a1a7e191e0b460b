// SPDX-License-Identifier: MIT
#include "chipview/chipviewnavigator.h"

#include "graphics/zelgraphicsview.h"

namespace mirn::zelchipview {

namespace {

// How far a scroll step asks to go, in pixels. The view takes the direction only.
constexpr int ScrollStep = 20;

} // namespace

ChipViewNavigator::ChipViewNavigator(ZelGraphicsView* view)
    : BaseNavigator(false, view)
    , m_view(view)
{ }

ChipViewNavigator::~ChipViewNavigator() = default;

void ChipViewNavigator::updateView(QObject*, BaseNavigator::Navigating how, int count)
{
    if (!m_view)
        return;
    const int distance = ScrollStep * count;
    switch (how) {
    case NavigateZoomIn:
        for (int i = 0; i < count; ++i)
            m_view->zoomIn();
        break;
    case NavigateZoomOut:
        for (int i = 0; i < count; ++i)
            m_view->zoomOut();
        break;
    case NavigateUp:
        m_view->scrollBy(0, -distance);
        break;
    case NavigateDown:
        m_view->scrollBy(0, distance);
        break;
    case NavigateLeft:
        m_view->scrollBy(-distance, 0);
        break;
    case NavigateRight:
        m_view->scrollBy(distance, 0);
        break;
    default:
        break;
    }
}

void ChipViewNavigator::updateView(QObject*, BaseNavigator::Navigating, QRectF)
{ }

} // namespace mirn::zelchipview
