// SPDX-License-Identifier: MIT
#include "tests/support/chipviewfixture.h"
#include "tests/support/testmain.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QFile>
#include <QMenu>
#include <QRubberBand>
#include <QScrollBar>
#include <QTemporaryDir>
#include <QTimer>

#include <cmath>
#include <functional>

using namespace zeltest;

namespace {

// What a host does to an item.
using Change = std::function<void(QGraphicsItem*)>;

// A drawing that is larger than the view, so that there is something to scroll.
void makeLarge(Drawing& drawing)
{
    drawing.parameter.width = 4000;
    drawing.parameter.height = 3000;
}

} // namespace

Q_DECLARE_METATYPE(Change)

class TestView : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void stepsStayWithinTheLimits_data();
    void stepsStayWithinTheLimits();
    void limitsHoldTheWholeDrawingAndItsDetail_data();
    void limitsHoldTheWholeDrawingAndItsDetail();
    void countsWholeSteps_data();
    void countsWholeSteps();
    void fitReturnsToTheUnscaledView();
    void zoomToItemsTakesTheScaleFromTheTransform();
    void zoomToNothingDoesNothing();
    void clickSelectsTheTopmostElement();
    void bandSelectsWhatItTouches_data();
    void bandSelectsWhatItTouches();
    void bandFindsElementsWhereAHostPutThem_data();
    void bandFindsElementsWhereAHostPutThem();
    void zoomModeZoomsToTheBandOrTheElement();
    void panModeScrollsWithTheMouse();
    void panStartsBehindTheDragDistance();
    void otherButtonsReleaseAsPresses();
    void scrollByTakesTheSignsOnly_data();
    void scrollByTakesTheSignsOnly();
    void contextMenuIsTheFilter();
    void viewWithoutSceneIsHarmless();
};

void TestView::stepsStayWithinTheLimits_data()
{
    QTest::addColumn<double>("start");
    QTest::addColumn<double>("afterZoomIn");
    QTest::addColumn<double>("afterZoomOut");
    QTest::newRow("inside") << 2.0 << 2.5 << 1.5;
    QTest::newRow("the upper limit can be reached") << 2.5 << 3.0 << 2.0;
    QTest::newRow("but not passed") << 2.6 << 2.6 << 2.1;
    QTest::newRow("the lower limit can be reached") << 1.0 << 1.5 << 0.5;
    QTest::newRow("nor passed") << 0.9 << 1.4 << 0.9;
    QTest::newRow("outside, set by hand") << 5.0 << 5.0 << 4.5;
}

void TestView::stepsStayWithinTheLimits()
{
    QFETCH(double, start);
    for (const bool isIn : {true, false}) {
        ChipView chip;
        chip.drawing.parameter.scaleStep = 0.5;
        chip.drawing.parameter.minimumScale = 0.5;
        chip.drawing.parameter.maximumScale = 3.0;
        chip.drawing.parameter.initialScale = start;
        chip.open();
        QCOMPARE(chip.view()->transform().m11(), start);
        isIn ? chip.window->zoomIn() : chip.window->zoomOut();
        const double expected = isIn ? *static_cast<double*>(QTest::qData("afterZoomIn", qMetaTypeId<double>()))
                                     : *static_cast<double*>(QTest::qData("afterZoomOut", qMetaTypeId<double>()));
        QCOMPARE(chip.view()->currentScale(), expected);
        const double factor = expected == start ? 1.0 : isIn ? 1.5 : 1 / 1.5;
        QCOMPARE(chip.view()->transform().m11(), start * factor);
    }
}

void TestView::limitsHoldTheWholeDrawingAndItsDetail_data()
{
    QTest::addColumn<QByteArray>("root"); // of a drawing without limits of its own
    QTest::newRow("tiny") << QByteArray("viewBox='0 0 1 1'");
    QTest::newRow("huge") << QByteArray("viewBox='0 0 1000000 1000000'");
    QTest::newRow("huge and narrow") << QByteArray("viewBox='0 0 50 1000000'");
    QTest::newRow("huge, with an initial scale") << QByteArray("viewBox='0 0 1000000 1000000' t:initial-scale='9'");
    QTest::newRow("huge, with large steps") << QByteArray("viewBox='0 0 1000000 1000000' t:scale-step='2'");
}

// Stepwise, from right after loading as well as from the fitted view.
void TestView::limitsHoldTheWholeDrawingAndItsDetail()
{
    QFETCH(QByteArray, root);
    QTemporaryDir folder;
    QFile file(folder.filePath(QStringLiteral("drawing.svg")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("<svg xmlns:t='urn:tovanel:chip-drawing' " + root + "/>");
    file.close();
    SVGParser parser;
    QVERIFY(parser.loadSVGElements(file.fileName().toStdString(), {}));
    for (const QSize size : {QSize(300, 200), QSize(4000, 2500)}) {
        ChipView chip;
        chip.drawing.parameter = parser.getSVGParameter();
        const double width = chip.drawing.parameter.width;
        const double height = chip.drawing.parameter.height;
        chip.drawing.addRect(1, 0, 0, width, height);
        chip.open();
        const double fitting = std::min(size.width() / width, size.height() / height);
        const auto stepAll = [&chip] {
            std::pair<double, double> scales;
            for (int i = 0; i < 200; ++i)
                chip.window->zoomIn();
            scales.second = chip.view()->transform().m11();
            for (int i = 0; i < 400; ++i)
                chip.window->zoomOut();
            scales.first = chip.view()->transform().m11();
            return scales;
        };
        for (const bool isFitted : {false, true}) {
            QList<QGraphicsItem*> items = chip.scene()->items();
            chip.view()->resize(size);
            if (isFitted)
                chip.view()->zoomTo(&items);
            const auto [least, most] = stepAll();
            QVERIFY2(
                least <= fitting && most >= 64 * fitting, qPrintable(QStringLiteral("%1 %2").arg(least).arg(most)));
        }
    }
}

void TestView::countsWholeSteps_data()
{
    QTest::addColumn<double>("step");
    QTest::addColumn<double>("transform");
    QTest::addColumn<int>("times");
    QTest::newRow("none") << 0.25 << 1.0 << 0;
    QTest::newRow("two halvings") << 1.0 << 0.25 << -2;
    QTest::newRow("not quite three") << 1.0 << 7.9 << 2;
    QTest::newRow("not quite minus three") << 1.0 << 0.13 << -2;
    QTest::newRow("ten steps that rounding left short") << 0.1 << std::pow(1.1, 10) * (1 - 1e-12) << 10;
    QTest::newRow("no step") << 0.0 << 4.0 << 0;
}

void TestView::countsWholeSteps()
{
    QFETCH(double, step);
    QFETCH(double, transform);
    ChipView chip;
    chip.drawing.parameter.scaleStep = step;
    chip.open();
    chip.view()->setTransform(QTransform::fromScale(transform, transform));
    QTEST(chip.view()->getScaleTimes(), "times");
}

void TestView::fitReturnsToTheUnscaledView()
{
    ChipView chip;
    chip.drawing.parameter.initialScale = 2.0;
    chip.drawing.parameter.scaleStep = 1.0;
    chip.open();
    chip.window->zoomIn();
    QCOMPARE(chip.view()->transform().m11(), 4.0);
    chip.window->zoomFit();
    QCOMPARE(chip.view()->transform().m11(), 1.0); // not the initial scale, which is the current one nevertheless
    QCOMPARE(chip.view()->currentScale(), 2.0);
    chip.view()->setTransform(QTransform::fromScale(0.25, 0.25));
    chip.window->zoomFit();
    QCOMPARE(chip.view()->transform().m11(), 1.0);
    chip.view()->setTransform(QTransform::fromScale(3, 3));
    chip.window->zoomFit();
    QCOMPARE(chip.view()->transform().m11(), 1.5); // whole steps only
}

void TestView::zoomToItemsTakesTheScaleFromTheTransform()
{
    ChipView chip;
    chip.drawing.addRect(1, 10, 10, 4, 4);
    chip.drawing.addRect(2, 26, 22, 4, 4);
    chip.drawing.parameter.layerRanges = {{0, {2.0, 100.0}}};
    chip.open();
    QVERIFY(chip.view()->getVisibleLayers().isEmpty());
    QList<QGraphicsItem*> items{chip.item(1), nullptr, chip.item(2)};
    chip.view()->zoomTo(&items);
    const QRectF shown = chip.view()->mapToScene(chip.view()->viewport()->rect()).boundingRect();
    QVERIFY(shown.contains(QRectF(10, 10, 20, 16)));
    QVERIFY(shown.height() < 20 || shown.width() < 24);
    QCOMPARE(chip.view()->currentScale(), chip.view()->getScaleTimes() * 0.25 + 1.0);
    QCOMPARE(chip.view()->getVisibleLayers(), QList<int>{0});
}

void TestView::zoomToNothingDoesNothing()
{
    ChipView chip;
    chip.drawing.addRect(1, 10, 10, 4, 4);
    chip.open();
    const QTransform before = chip.view()->transform();
    QList<QGraphicsItem*> none;
    QList<QGraphicsItem*> nullFirst{nullptr, chip.item(1)};
    chip.window->zoomTo(); // the scene's own list is empty
    chip.view()->zoomTo(&none);
    chip.view()->zoomTo(&nullFirst);
    QCOMPARE(chip.view()->transform(), before);
    chip.scene()->zoomItems().append(chip.item(1));
    chip.window->zoomTo();
    QVERIFY(chip.view()->transform().m11() > 10);
}

void TestView::clickSelectsTheTopmostElement()
{
    ChipView chip;
    chip.drawing.addRect(1, 10, 10, 60, 60);
    chip.drawing.addRect(2, 20, 20, 20, 20);
    chip.drawing.addText(3, "WWWWW", 22, 30, 10);
    chip.drawing.addText(4, "WWWWW", 120, 50, 10);
    chip.open();
    chip.click({65, 65});
    QCOMPARE(chip.selected(), QSet<int>{1});
    chip.click({26, 34}); // on the text above both rects
    QCOMPARE(chip.selected(), QSet<int>{2});
    chip.click({124, 54}); // on a text with nothing below it
    QVERIFY(chip.selected().isEmpty());
}

void TestView::bandSelectsWhatItTouches_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<QSet<int>>("ids");
    QTest::newRow("one inside") << QPointF(5, 5) << QPointF(35, 35) << QSet<int>{1};
    QTest::newRow("drawn backwards") << QPointF(35, 35) << QPointF(5, 5) << QSet<int>{1};
    QTest::newRow("two touched") << QPointF(28, 5) << QPointF(75, 15) << QSet<int>{1, 2};
    QTest::newRow("nothing there") << QPointF(100, 60) << QPointF(150, 90) << QSet<int>{};
    QTest::newRow("beside the slope of a polygon") << QPointF(185, 35) << QPointF(198, 45) << QSet<int>{};
    // These begin on a rect and end where nothing is.
    QTest::newRow("too thin a band is a click at its end") << QPointF(75, 20) << QPointF(76, 50) << QSet<int>{};
    QTest::newRow("too flat a band is one, too") << QPointF(85, 20) << QPointF(110, 21) << QSet<int>{};
    QTest::newRow("just wide enough") << QPointF(88, 20) << QPointF(91, 50) << QSet<int>{2};
}

void TestView::bandSelectsWhatItTouches()
{
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    ChipView chip;
    chip.drawing.addRect(1, 10, 10, 20, 20);
    chip.drawing.addRect(2, 70, 10, 20, 20);
    chip.drawing.addPolygon(3, {{150, 10}, {200, 10}, {150, 50}});
    chip.open();
    chip.database()->addSelctedItem(99, false);
    chip.drag(from, to);
    QTEST(chip.selected(), "ids");
    QVERIFY(!chip.view()->findChild<QRubberBand*>()->isVisible());
}

void TestView::bandFindsElementsWhereAHostPutThem_data()
{
    QTest::addColumn<Change>("change");
    QTest::newRow("moved") << Change([](QGraphicsItem* item) { item->moveBy(90, 10); });
    QTest::newRow("turned") << Change([](QGraphicsItem* item) { item->setRotation(-40); });
    QTest::newRow("transformed") << Change([](QGraphicsItem* item) { item->setTransform({2, 0, 0.3, 1, 5, 9}); });
    QTest::newRow("hidden") << Change([](QGraphicsItem* item) { item->hide(); });
    QTest::newRow("below an item of its own") << Change([](QGraphicsItem* item) {
        item->setParentItem(item->scene()->addRect(0, 0, 1, 1));
        item->parentItem()->setPos(100, 0);
    });
}

void TestView::bandFindsElementsWhereAHostPutThem()
{
    QFETCH(Change, change);
    for (const bool isNoticed : {false, true}) {
        ChipView chip;
        for (int id = 0; id < 12; ++id)
            chip.drawing.addRect(id, 4 + id % 4 * 50, 4 + id / 4 * 32, 20, 20);
        chip.open();
        change(chip.item(2));
        if (isNoticed)
            QCoreApplication::processEvents();
        for (const QRectF band :
            {QRectF(0, 0, 40, 40), QRectF(50, 0, 40, 40), QRectF(70, 25, 40, 9), QRectF(90, 0, 99, 60)}) {
            QSet<int> expected;
            const QRectF inScene = chip.view()
                                       ->mapToScene(QRect(chip.view()->mapFromScene(band.topLeft()),
                                           chip.view()->mapFromScene(band.bottomRight())))
                                       .boundingRect();
            for (QGraphicsItem* item : chip.scene()->items(inScene, Qt::IntersectsItemShape)) {
                if (int loadNumber = item->data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt())
                    expected.insert(loadNumber - 1);
            }
            chip.drag(band.topLeft(), band.bottomRight());
            QCOMPARE(chip.selected(), expected);
        }
    }
}

void TestView::zoomModeZoomsToTheBandOrTheElement()
{
    ChipView chip;
    chip.drawing.addRect(1, 10, 10, 20, 20);
    chip.drawing.addRect(2, 70, 10, 20, 20);
    chip.open();
    chip.database()->addSelctedItem(1, false);
    chip.database()->getAction(ACTION_ZOOM)->trigger();
    QCOMPARE(chip.view()->cursor().shape(), Qt::CrossCursor);
    chip.drag({5, 5}, {35, 35});
    QVERIFY(chip.selected().isEmpty());
    const double scale = chip.view()->transform().m11();
    QVERIFY(scale > 10);
    chip.click({180, 80}); // nothing there
    QCOMPARE(chip.view()->transform().m11(), scale);
    chip.view()->setTransform(QTransform());
    chip.click({75, 15});
    const QRectF shown = chip.view()->mapToScene(chip.view()->viewport()->rect()).boundingRect();
    QVERIFY(shown.contains(QRectF(71, 11, 18, 18)) && shown.width() < 60);
}

void TestView::panModeScrollsWithTheMouse()
{
    ChipView chip;
    makeLarge(chip.drawing);
    chip.drawing.addRect(1, 0, 0, 4000, 3000);
    chip.open();
    chip.view()->centerOn(2000, 1500);
    chip.database()->getAction(ACTION_PAN)->trigger();
    QCOMPARE(chip.view()->cursor().shape(), Qt::OpenHandCursor);
    const int x = chip.view()->horizontalScrollBar()->value();
    const int y = chip.view()->verticalScrollBar()->value();
    chip.dragPixels({200, 150}, {140, 180});
    QCOMPARE(chip.view()->horizontalScrollBar()->value(), x + 60);
    QCOMPARE(chip.view()->verticalScrollBar()->value(), y - 30);
    QVERIFY(chip.selected().isEmpty());
    chip.mouse(QEvent::MouseMove, {10, 10}); // the pan ended with the release
    QCOMPARE(chip.view()->horizontalScrollBar()->value(), x + 60);
    chip.mouse(QEvent::MouseButtonPress, {200, 150});
    chip.database()->getAction(ACTION_SELECT)->trigger(); // the mode counts, not only how the gesture began
    chip.mouse(QEvent::MouseMove, {100, 150});
    QCOMPARE(chip.view()->horizontalScrollBar()->value(), x + 60);
    // A dialog opens, and the button's release is lost.
    QFocusEvent dialogOpens(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
    QCoreApplication::sendEvent(chip.view(), &dialogOpens);
    chip.click({200, 150});
    QCOMPARE(chip.selected(), QSet<int>{1});
    chip.mouse(QEvent::MouseButtonPress, {200, 150});
    QCoreApplication::sendEvent(chip.view(), &dialogOpens);
    QVERIFY(!chip.view()->findChild<QRubberBand*>()->isVisible());
}

void TestView::panStartsBehindTheDragDistance()
{
    ChipView chip;
    makeLarge(chip.drawing);
    chip.open();
    chip.database()->getAction(ACTION_PAN)->trigger();
    const int x = chip.view()->horizontalScrollBar()->value();
    chip.dragPixels({200, 150}, {200 - QApplication::startDragDistance() + 1, 150});
    QCOMPARE(chip.view()->horizontalScrollBar()->value(), x);
}

void TestView::otherButtonsReleaseAsPresses()
{
    class PressCounter final : public QGraphicsRectItem
    {
    public:
        using QGraphicsRectItem::QGraphicsRectItem;
        void mousePressEvent(QGraphicsSceneMouseEvent*) override { ++presses; }
        int presses = 0;
    };
    ChipView chip;
    chip.open();
    auto* counter = new PressCounter(0, 0, 200, 100);
    chip.scene()->addItem(counter);
    const QPoint position = chip.view()->mapFromScene(100.0, 50.0);
    chip.mouse(QEvent::MouseButtonRelease, position, Qt::RightButton);
    QCOMPARE(counter->presses, 1);
    chip.mouse(QEvent::MouseButtonRelease, position, Qt::LeftButton);
    QCOMPARE(counter->presses, 1);
}

void TestView::scrollByTakesTheSignsOnly_data()
{
    QTest::addColumn<double>("dx");
    QTest::addColumn<double>("dy");
    QTest::addColumn<QPoint>("steps");
    QTest::newRow("up") << 0.0 << -500.0 << QPoint(0, -1);
    QTest::newRow("down") << 0.0 << 0.1 << QPoint(0, 1);
    QTest::newRow("nowhere is down") << 0.0 << 0.0 << QPoint(0, 1);
    QTest::newRow("left") << -3.0 << 0.0 << QPoint(-1, 0);
    QTest::newRow("right") << 300.0 << 0.0 << QPoint(1, 0);
    QTest::newRow("both") << 3.0 << -2.0 << QPoint(0, 0);
}

void TestView::scrollByTakesTheSignsOnly()
{
    QFETCH(double, dx);
    QFETCH(double, dy);
    ChipView chip;
    makeLarge(chip.drawing);
    chip.open();
    chip.view()->centerOn(2000, 1500);
    QScrollBar* horizontal = chip.view()->horizontalScrollBar();
    QScrollBar* vertical = chip.view()->verticalScrollBar();
    const QPoint before(horizontal->value(), vertical->value());
    chip.view()->scrollBy(dx, dy);
    const QPoint way = QPoint(horizontal->value(), vertical->value()) - before;
    QTEST(QPoint(way.x() / horizontal->singleStep(), way.y() / vertical->singleStep()), "steps");
}

void TestView::contextMenuIsTheFilter()
{
    ChipView chip;
    chip.open();
    const QPoint position(20, 20);
    chip.mouse(QEvent::MouseButtonPress, position);
    QWidget* popup = nullptr;
    QTimer::singleShot(0, qApp, [&] {
        popup = QApplication::activePopupWidget();
        if (popup)
            popup->close();
    });
    QContextMenuEvent event(QContextMenuEvent::Mouse, position, chip.view()->viewport()->mapToGlobal(position));
    QApplication::sendEvent(chip.view()->viewport(), &event);
    QCOMPARE(popup, static_cast<QWidget*>(chip.database()->getViewFilterMenu()));
    QVERIFY(!chip.view()->findChild<QRubberBand*>()->isVisible());
}

void TestView::viewWithoutSceneIsHarmless()
{
    ZelGraphicsView view(nullptr, nullptr);
    view.resize(100, 100);
    view.zoomIn();
    view.zoomOut();
    view.zoomFit();
    view.zoomTo(nullptr);
    view.setCurrentScale(2.0);
    QCOMPARE(view.transform().m11(), 2.0);
    QVERIFY(view.getVisibleLayers().isEmpty());
    QTest::mouseClick(view.viewport(), Qt::LeftButton, {}, {50, 50});
    QTest::mouseDClick(view.viewport(), Qt::LeftButton, {}, {50, 50});
    QVERIFY(!ZELChipViewDatabase::existingInstance()); // what is left of a window makes no new controller
}

ZEL_TEST_MAIN(TestView)
#include "tst_view.moc"
