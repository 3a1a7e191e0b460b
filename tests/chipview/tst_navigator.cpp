// SPDX-License-Identifier: MIT
#include "chipview/chipviewnavigator.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/events.h"

#include <climits>
#include <cmath>
#include <functional>

using namespace zeltest;

namespace {

// What somebody does to move the view.
using Deed = std::function<void()>;

Deed request(int how, int count)
{
    return [=] {
        ChipViewNavigator navigator(ChipView::view());
        const auto navigating = static_cast<BaseNavigator::Navigating>(how);
        navigator.updateView(nullptr, navigating, QRectF(0, 0, 10, 10)); // rectangles are not followed
        navigator.updateView(nullptr, navigating, count);
    };
}

Deed key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    return [=] { QTest::keyClick(ChipView::view(), key, modifiers); };
}

Deed wheel(QPoint angleDelta, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int times = 1)
{
    return [=] {
        QWidget* viewport = ChipView::view()->viewport();
        for (int i = 0; i < times; ++i)
            turnWheel(viewport, viewport->rect().center(), angleDelta, modifiers);
    };
}

} // namespace

class TestNavigator : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void movesOnce_data()
    {
        const auto threeAndOneBack = [] {
            wheel({0, 30}, Qt::ControlModifier, 3)();
            wheel({0, -30}, Qt::ControlModifier)();
        };
        const Rows<Deed, int, QPoint> row; // zoom steps and, where there are none, steps of the scroll bars
        row("no request", request(0, 1), 0, {0, 0});
        row("zoom in three times", request(1, 3), 3, {});
        row("zoom out twice", request(2, 2), -2, {});
        row("zoom no times", request(1, 0), 0, {0, 0});
        row("zoom minus one times", request(2, -1), 0, {0, 0});
        row("up, by one step whatever the count", request(3, 5), 0, {0, -1});
        row("down", request(4, 1), 0, {0, 1});
        row("left", request(5, 1), 0, {-1, 0});
        row("right", request(6, 1), 0, {1, 0});
        row("left no times is a step down", request(5, 0), 0, {0, 1});
        row("an unknown kind", request(7, 1), 0, {0, 0});
        row("a number beyond all kinds", request(1000, 1), 0, {0, 0});
        row("zoom in to the limit", request(1, INT_MAX), 60, {});
        row("zoom out to the limit", request(2, INT_MAX), -3, {});
        row("up by more than an int holds", request(3, INT_MAX), 0, {0, -1});
        row("right by less than an int holds is left", request(6, INT_MIN), 0, {-1, 0});
        row("the key plus", key(Qt::Key_Plus), 1, {});
        row("plus of the key pad", key(Qt::Key_Plus, Qt::KeypadModifier), 1, {});
        row("minus", key(Qt::Key_Minus), -1, {});
        row("the key up", key(Qt::Key_Up), 0, {0, -1});
        row("the key right", key(Qt::Key_Right), 0, {1, 0});
        row("Ctrl+plus is the host's", key(Qt::Key_Plus, Qt::ControlModifier), 0, {0, 0});
        row("a letter", key(Qt::Key_A), 0, {0, 0});
        row("the wheel away scrolls up", wheel({0, 120}), 0, {0, -1});
        row("as far as a number goes scrolls up", wheel({0, INT_MAX}), 0, {0, -1});
        row("towards scrolls down", wheel({0, -120}), 0, {0, 1});
        row("sideways", wheel({120, 0}), 0, {-1, 0});
        row("Ctrl zooms in", wheel({0, 120}, Qt::ControlModifier), 1, {});
        row("Ctrl, two notches towards, zooms out twice", wheel({0, -240}, Qt::ControlModifier), -2, {});
        row("seven quarters of a notch", wheel({0, 30}, Qt::ControlModifier, 7), 1, {});
        row("three quarters, and one back", threeAndOneBack, 0, {0, 0});
        row("eight quarters", wheel({0, 30}, Qt::ControlModifier, 8), 2, {});
    }

    void movesOnce()
    {
        const auto [deed, zoomSteps, scrollSteps] = row<Deed, int, QPoint>();
        ChipView chip;
        chip.drawing.setSize(4000, 4000);
        chip.open();
        chip.view()->centerOn(2000, 2000);
        const double scale = chip.view()->transform().m11();
        const QPoint position = chip.scrolled();
        deed();
        QCOMPARE(qRound(std::log(chip.view()->transform().m11() / scale) / std::log(1.25)), zoomSteps);
        const QPoint way = chip.scrolled() - position;
        const QPoint step(
            chip.view()->horizontalScrollBar()->singleStep(), chip.view()->verticalScrollBar()->singleStep());
        if (zoomSteps == 0)
            QCOMPARE(QPoint(way.x() / step.x(), way.y() / step.y()), scrollSteps);
    }

    void zoomingWithoutEffectEnds()
    {
        ChipView chip;
        chip.drawing.parameter.scaleStep = 0; // never comes to a limit
        chip.open();
        const QTransform before = chip.view()->transform();
        request(BaseNavigator::NavigateZoomIn, INT_MAX)();
        request(BaseNavigator::NavigateZoomOut, INT_MAX)();
        QCOMPARE(chip.view()->transform(), before);
    }
};

ZEL_TEST_MAIN(TestNavigator)
#include "tst_navigator.moc"
