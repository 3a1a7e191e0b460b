// SPDX-License-Identifier: MIT
#include "chipview/chipviewnavigator.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/testmain.h"

#include <QScrollBar>
#include <QWheelEvent>

#include <climits>
#include <cmath>

using namespace zeltest;

namespace {

void turnWheel(QPoint angleDelta, Qt::KeyboardModifiers modifiers)
{
    QWidget* viewport = ChipView::view()->viewport();
    const QPoint middle = viewport->rect().center();
    QWheelEvent event(
        middle, viewport->mapToGlobal(middle), QPoint(), angleDelta, Qt::NoButton, modifiers, Qt::NoScrollPhase, false);
    QApplication::sendEvent(viewport, &event);
}

// Zoom steps and scroll bar steps since the object was made.
class Movement
{
public:
    Movement()
        : m_scale(ChipView::view()->transform().m11())
        , m_position(position())
    { }

    QPoint scrollSteps() const
    {
        const QPoint way = position() - m_position;
        return {way.x() / ChipView::view()->horizontalScrollBar()->singleStep(),
            way.y() / ChipView::view()->verticalScrollBar()->singleStep()};
    }

    int zoomSteps() const { return qRound(std::log(ChipView::view()->transform().m11() / m_scale) / std::log(1.25)); }

private:
    static QPoint position()
    {
        return {ChipView::view()->horizontalScrollBar()->value(), ChipView::view()->verticalScrollBar()->value()};
    }

    double m_scale;
    QPoint m_position;
};

} // namespace

class TestNavigator : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void answersRequests_data();
    void answersRequests();
    void keysActOnce_data();
    void keysActOnce();
    void wheelActsOnce_data();
    void wheelActsOnce();
    void zoomingWithoutEffectEnds();
    void fractionsOfAWheelStepAddUp();
};

void TestNavigator::answersRequests_data()
{
    QTest::addColumn<int>("how");
    QTest::addColumn<int>("count");
    QTest::addColumn<int>("zoomSteps");
    QTest::addColumn<QPoint>("scrollSteps");
    QTest::newRow("nothing") << 0 << 1 << 0 << QPoint(0, 0);
    QTest::newRow("zoom in three times") << 1 << 3 << 3 << QPoint();
    QTest::newRow("zoom out twice") << 2 << 2 << -2 << QPoint();
    QTest::newRow("zoom no times") << 1 << 0 << 0 << QPoint(0, 0);
    QTest::newRow("zoom minus one times") << 2 << -1 << 0 << QPoint(0, 0);
    QTest::newRow("up, by one step whatever the count") << 3 << 5 << 0 << QPoint(0, -1);
    QTest::newRow("down") << 4 << 1 << 0 << QPoint(0, 1);
    QTest::newRow("left") << 5 << 1 << 0 << QPoint(-1, 0);
    QTest::newRow("right") << 6 << 1 << 0 << QPoint(1, 0);
    QTest::newRow("left no times is a step down") << 5 << 0 << 0 << QPoint(0, 1);
    QTest::newRow("an unknown kind") << 7 << 1 << 0 << QPoint(0, 0);
    QTest::newRow("a number beyond all kinds") << 1000 << 1 << 0 << QPoint(0, 0);
    QTest::newRow("zoom in to the limit") << 1 << INT_MAX << 60 << QPoint();
    QTest::newRow("zoom out to the limit") << 2 << INT_MAX << -3 << QPoint();
    QTest::newRow("up by more than an int holds") << 3 << INT_MAX << 0 << QPoint(0, -1);
    QTest::newRow("right by less than an int holds is left") << 6 << INT_MIN << 0 << QPoint(-1, 0);
}

void TestNavigator::answersRequests()
{
    QFETCH(int, how);
    QFETCH(int, count);
    QFETCH(int, zoomSteps);
    ChipView chip;
    chip.drawing.parameter.width = chip.drawing.parameter.height = 4000;
    chip.open();
    chip.view()->centerOn(2000, 2000);
    ChipViewNavigator navigator(chip.view());
    const auto navigating = static_cast<BaseNavigator::Navigating>(how);
    const Movement movement;
    navigator.updateView(nullptr, navigating, QRectF(0, 0, 10, 10)); // rectangles are not followed
    navigator.updateView(nullptr, navigating, count);
    QCOMPARE(movement.zoomSteps(), zoomSteps);
    if (zoomSteps == 0)
        QTEST(movement.scrollSteps(), "scrollSteps");
}

void TestNavigator::zoomingWithoutEffectEnds()
{
    ChipView chip;
    chip.drawing.parameter.scaleStep = 0; // never comes to a limit
    chip.open();
    const Movement movement;
    ChipViewNavigator navigator(chip.view());
    navigator.updateView(nullptr, BaseNavigator::NavigateZoomIn, INT_MAX);
    navigator.updateView(nullptr, BaseNavigator::NavigateZoomOut, INT_MAX);
    QCOMPARE(movement.zoomSteps(), 0);
}

void TestNavigator::keysActOnce_data()
{
    QTest::addColumn<int>("key");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<int>("zoomSteps");
    QTest::addColumn<QPoint>("scrollSteps");
    QTest::newRow("plus") << int(Qt::Key_Plus) << int(Qt::NoModifier) << 1 << QPoint();
    QTest::newRow("plus of the key pad") << int(Qt::Key_Plus) << int(Qt::KeypadModifier) << 1 << QPoint();
    QTest::newRow("minus") << int(Qt::Key_Minus) << int(Qt::NoModifier) << -1 << QPoint();
    QTest::newRow("up") << int(Qt::Key_Up) << int(Qt::NoModifier) << 0 << QPoint(0, -1);
    QTest::newRow("right") << int(Qt::Key_Right) << int(Qt::NoModifier) << 0 << QPoint(1, 0);
    QTest::newRow("Ctrl+plus is the host's") << int(Qt::Key_Plus) << int(Qt::ControlModifier) << 0 << QPoint(0, 0);
    QTest::newRow("a letter") << int(Qt::Key_A) << int(Qt::NoModifier) << 0 << QPoint(0, 0);
}

void TestNavigator::keysActOnce()
{
    QFETCH(int, key);
    QFETCH(int, modifiers);
    QFETCH(int, zoomSteps);
    ChipView chip;
    chip.drawing.parameter.width = chip.drawing.parameter.height = 4000;
    chip.open();
    chip.view()->centerOn(2000, 2000);
    const Movement movement;
    QTest::keyClick(chip.view(), static_cast<Qt::Key>(key), Qt::KeyboardModifiers(modifiers));
    QCOMPARE(movement.zoomSteps(), zoomSteps);
    if (zoomSteps == 0)
        QTEST(movement.scrollSteps(), "scrollSteps");
}

void TestNavigator::wheelActsOnce_data()
{
    QTest::addColumn<QPoint>("delta");
    QTest::addColumn<int>("modifiers");
    QTest::addColumn<int>("zoomSteps");
    QTest::addColumn<QPoint>("scrollSteps");
    QTest::newRow("away scrolls up") << QPoint(0, 120) << int(Qt::NoModifier) << 0 << QPoint(0, -1);
    QTest::newRow("as far as a number goes scrolls up")
        << QPoint(0, INT_MAX) << int(Qt::NoModifier) << 0 << QPoint(0, -1);
    QTest::newRow("towards scrolls down") << QPoint(0, -120) << int(Qt::NoModifier) << 0 << QPoint(0, 1);
    QTest::newRow("sideways") << QPoint(120, 0) << int(Qt::NoModifier) << 0 << QPoint(-1, 0);
    QTest::newRow("Ctrl zooms in") << QPoint(0, 120) << int(Qt::ControlModifier) << 1 << QPoint();
    QTest::newRow("Ctrl, two notches towards, zooms out twice")
        << QPoint(0, -240) << int(Qt::ControlModifier) << -2 << QPoint();
}

void TestNavigator::wheelActsOnce()
{
    QFETCH(QPoint, delta);
    QFETCH(int, modifiers);
    QFETCH(int, zoomSteps);
    ChipView chip;
    chip.drawing.parameter.width = chip.drawing.parameter.height = 4000;
    chip.open();
    chip.view()->centerOn(2000, 2000);
    const Movement movement;
    turnWheel(delta, Qt::KeyboardModifiers(modifiers));
    QCOMPARE(movement.zoomSteps(), zoomSteps);
    if (zoomSteps == 0)
        QTEST(movement.scrollSteps(), "scrollSteps");
}

void TestNavigator::fractionsOfAWheelStepAddUp()
{
    ChipView chip;
    chip.open();
    const Movement movement;
    for (int i = 0; i < 7; ++i)
        turnWheel({0, 30}, Qt::ControlModifier);
    QCOMPARE(movement.zoomSteps(), 1);
    turnWheel({0, 30}, Qt::ControlModifier);
    QCOMPARE(movement.zoomSteps(), 2);
}

ZEL_TEST_MAIN(TestNavigator)
#include "tst_navigator.moc"
