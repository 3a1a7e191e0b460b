// SPDX-License-Identifier: MIT
#include "chipview/chipviewnavigator.h"

#include "graphics/zelgraphicsview.h"

#include <QPointer>
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

struct ChipViewNavigator::Parts
{
    QPointer<ZelGraphicsView> view;
};

ChipViewNavigator::ChipViewNavigator(ZelGraphicsView* view)
    : BaseNavigator(false, view)
    , m_parts(std::make_unique<Parts>(Parts{view}))
{ }

ChipViewNavigator::~ChipViewNavigator() = default;

void ChipViewNavigator::updateView(QObject*, BaseNavigator::Navigating how, int count)
{
    ZelGraphicsView* view = m_parts->view;
    if (!view)
        return;
    count = std::clamp(count, -MostSteps, MostSteps);
    const int distance = ScrollStep * count;
    switch (how) {
    case NavigateZoomIn:
        view->zoomApproximately([=] { repeat(&ZelGraphicsView::zoomIn, *view, count); });
        break;
    case NavigateZoomOut:
        view->zoomApproximately([=] { repeat(&ZelGraphicsView::zoomOut, *view, count); });
        break;
    case NavigateUp:
        view->scrollBy(0, -distance);
        break;
    case NavigateDown:
        view->scrollBy(0, distance);
        break;
    case NavigateLeft:
        view->scrollBy(-distance, 0);
        break;
    case NavigateRight:
        view->scrollBy(distance, 0);
        break;
    default:
        break;
    }
}

void ChipViewNavigator::updateView(QObject*, BaseNavigator::Navigating, QRectF)
{ }

} // namespace mirn::zelchipview
