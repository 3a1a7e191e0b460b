// SPDX-License-Identifier: MIT
#include "chipview/chipviewnavigator.h"

#include "graphics/zelgraphicsview.h"

#include <QTransform>

#include <algorithm>

namespace mirn::zelchipview {

namespace {

// The distance of a scroll step, in pixels. The view uses only the direction.
constexpr int ScrollStep = 20;

// The largest number of zoom or scroll steps in one call.
constexpr int MostSteps = 100'000;

// Zooms `count` times, or until a zoom has no effect because the scale is at its limit.
void repeat(void (ZelGraphicsView::*zoom)(), ZelGraphicsView& view, int count)
{
    for (int i = 0; i < count; ++i) {
        const QTransform before = view.transform();
        (view.*zoom)();
        if (view.transform() == before)
            return;
    }
}

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
    count = std::clamp(count, -MostSteps, MostSteps);
    const int distance = ScrollStep * count;
    switch (how) {
    case NavigateZoomIn:
        repeat(&ZelGraphicsView::zoomIn, *m_view, count);
        break;
    case NavigateZoomOut:
        repeat(&ZelGraphicsView::zoomOut, *m_view, count);
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
