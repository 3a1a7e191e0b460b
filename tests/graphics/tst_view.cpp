// SPDX-License-Identifier: MIT
#include "tests/support/chipviewfixture.h"
#include "tests/support/events.h"

#include <QAction>
#include <QMenu>
#include <QRubberBand>

#include <cmath>
#include <functional>

using namespace zeltest;

class TestView : public zeltest::Test
{
    Q_OBJECT
    using Change = std::function<void(QGraphicsItem*)>; // a host's, to an item

private Q_SLOTS:
    void stepsStayWithinTheLimits_data()
    {
        const Rows<double, double, double> row;
        row("inside", 2.0, 2.5, 1.5);
        row("the upper limit can be reached", 2.5, 3.0, 2.0);
        row("but not passed", 2.6, 2.6, 2.1);
        row("the lower limit can be reached", 1.0, 1.5, 0.5);
        row("nor passed", 0.9, 1.4, 0.9);
        row("outside, set by hand", 5.0, 5.0, 4.5);
    }

    void stepsStayWithinTheLimits()
    {
        const auto [start, afterZoomIn, afterZoomOut] = row<double, double, double>();
        for (const bool isIn : {true, false}) {
            ChipView chip;
            chip.drawing.parameter.scaleStep = 0.5;
            chip.drawing.parameter.minimumScale = 0.5;
            chip.drawing.parameter.maximumScale = 3.0;
            chip.drawing.parameter.initialScale = start;
            chip.open();
            QCOMPARE(chip.view()->transform().m11(), start);
            isIn ? chip.window->zoomIn() : chip.window->zoomOut();
            const double expected = isIn ? afterZoomIn : afterZoomOut;
            QCOMPARE(chip.view()->currentScale(), expected);
            const double factor = expected == start ? 1.0 : isIn ? 1.5 : 1 / 1.5;
            QCOMPARE(chip.view()->transform().m11(), start * factor);
        }
    }

    // Stepwise, from right after loading as well as from the fitted view. A drawing without limits of its own.
    void limitsHoldTheWholeDrawingAndItsDetail_data()
    {
        const Rows<QByteArray> row;
        row("tiny", "viewBox='0 0 1 1'");
        row("tiny, with large steps", "viewBox='0 0 1 1' t:scale-step='1'");
        row("huge", "viewBox='0 0 1000000 1000000'");
        row("huge and narrow", "viewBox='0 0 50 1000000'");
        row("huge, with an initial scale", "viewBox='0 0 1000000 1000000' t:initial-scale='9'");
        row("huge, with large steps", "viewBox='0 0 1000000 1000000' t:scale-step='2'");
    }

    void limitsHoldTheWholeDrawingAndItsDetail()
    {
        const auto [root] = row<QByteArray>();
        QTemporaryDir folder;
        const QString path = folder.filePath("drawing.svg");
        writeFile(path, "<svg xmlns:t='urn:tovanel:chip-drawing' " + root + "/>");
        SVGParser parser;
        QVERIFY(parser.loadSVGElements(path.toStdString(), {}));
        for (const QSize size : {QSize(300, 200), QSize(4000, 2500)}) {
            ChipView chip;
            chip.drawing.parameter = parser.getSVGParameter();
            const double width = chip.drawing.parameter.width;
            const double height = chip.drawing.parameter.height;
            chip.drawing.addRect(1, 0, 0, width, height);
            chip.open();
            const double fitting = std::min(size.width() / width, size.height() / height);
            for (const bool isFitted : {false, true}) {
                QList<QGraphicsItem*> items = chip.scene()->items();
                chip.view()->resize(size);
                if (isFitted)
                    chip.view()->zoomTo(&items);
                for (int i = 0; i < 200; ++i)
                    chip.window->zoomIn();
                QVERIFY(chip.view()->transform().m11() >= 64 * fitting);
                for (int i = 0; i < 400; ++i)
                    chip.window->zoomOut();
                QVERIFY(chip.view()->transform().m11() <= fitting);
            }
        }
    }

    void countsWholeSteps_data()
    {
        const Rows<double, double, int> row;
        row("none", 0.25, 1.0, 0);
        row("two halvings", 1.0, 0.25, -2);
        row("not quite three", 1.0, 7.9, 2);
        row("not quite minus three", 1.0, 0.13, -2);
        row("ten steps that rounding left short", 0.1, std::pow(1.1, 10) * (1 - 1e-12), 10);
        row("no step", 0.0, 4.0, 0);
    }

    void countsWholeSteps()
    {
        const auto [step, transform, times] = row<double, double, int>();
        ChipView chip;
        chip.drawing.parameter.scaleStep = step;
        chip.open();
        chip.view()->setTransform(QTransform::fromScale(transform, transform));
        QCOMPARE(chip.view()->getScaleTimes(), times);
    }

    void fitReturnsToTheUnscaledView()
    {
        ChipView chip;
        chip.drawing.parameter.initialScale = 2.0;
        chip.drawing.parameter.scaleStep = 1.0;
        chip.open();
        chip.window->zoomIn();
        QCOMPARE(chip.view()->transform().m11(), 4.0);
        for (const auto& [before, fitted] : {std::pair(4.0, 1.0), std::pair(0.25, 1.0), std::pair(3.0, 1.5)}) {
            chip.view()->setTransform(QTransform::fromScale(before, before));
            chip.window->zoomFit();
            QCOMPARE(chip.view()->transform().m11(), fitted); // whole steps only, and not to the initial scale
            QCOMPARE(chip.view()->currentScale(), 2.0); // which is the current one nevertheless
        }
    }

    void zoomToItemsTakesTheScaleFromTheTransform()
    {
        ChipView chip;
        chip.drawing.addRect(1, 10, 10, 4, 4);
        chip.drawing.addRect(2, 26, 22, 4, 4);
        chip.drawing.parameter.layerRanges = {{0, {2.0, 100.0}}};
        chip.open();
        QVERIFY(chip.view()->getVisibleLayers().isEmpty());
        const QTransform before = chip.view()->transform();
        chip.window->zoomTo(); // the scene's own list is empty
        for (QList<QGraphicsItem*> items : {QList<QGraphicsItem*>(), QList<QGraphicsItem*>{nullptr, chip.item(1)}})
            chip.view()->zoomTo(&items);
        QCOMPARE(chip.view()->transform(), before);
        QList<QGraphicsItem*> items{chip.item(1), nullptr, chip.item(2)};
        chip.view()->zoomTo(&items);
        const QRectF shown = chip.shownPart();
        QVERIFY(shown.contains(QRectF(10, 10, 20, 16)));
        QVERIFY(shown.height() < 20 || shown.width() < 24);
        QCOMPARE(chip.view()->currentScale(), chip.view()->getScaleTimes() * 0.25 + 1.0);
        QCOMPARE(chip.view()->getVisibleLayers(), QList<int>{0});
        chip.scene()->zoomItems().append(chip.item(1));
        chip.window->zoomTo();
        QVERIFY(chip.shownPart().contains(QRectF(10, 10, 4, 4)) && chip.shownPart().width() < 20);
    }

    void clickSelectsTheTopmostElement()
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

    void bandSelectsWhatItTouches_data()
    {
        const Rows<QPointF, QPointF, QSet<int>> row;
        row("one inside", QPointF(5, 5), QPointF(35, 35), QSet<int>{1});
        row("drawn backwards", QPointF(35, 35), QPointF(5, 5), QSet<int>{1});
        row("two touched", QPointF(28, 5), QPointF(75, 15), QSet<int>{1, 2});
        row("nothing there", QPointF(100, 60), QPointF(150, 90), QSet<int>{});
        row("beside the slope of a polygon", QPointF(185, 35), QPointF(198, 45), QSet<int>{});
        // These begin on a rect and end where nothing is.
        row("too thin a band is a click at its end", QPointF(75, 20), QPointF(76, 50), QSet<int>{});
        row("too flat a band is one, too", QPointF(85, 20), QPointF(110, 21), QSet<int>{});
        row("just wide enough", QPointF(88, 20), QPointF(91, 50), QSet<int>{2});
    }

    void bandSelectsWhatItTouches()
    {
        const auto [from, to, ids] = row<QPointF, QPointF, QSet<int>>();
        ChipView chip;
        chip.drawing.addRect(1, 10, 10, 20, 20);
        chip.drawing.addRect(2, 70, 10, 20, 20);
        chip.drawing.addPolygon(3, {{150, 10}, {200, 10}, {150, 50}});
        chip.open();
        chip.database()->addSelctedItem(99, false);
        chip.drag(from, to);
        QCOMPARE(chip.selected(), ids);
        QVERIFY(!chip.view()->findChild<QRubberBand*>()->isVisible());
    }

    void bandFindsElementsWhereAHostPutThem_data()
    {
        const Rows<Change> row;
        row("moved", [](QGraphicsItem* item) { item->moveBy(90, 10); });
        row("turned", [](QGraphicsItem* item) { item->setRotation(-40); });
        row("transformed", [](QGraphicsItem* item) { item->setTransform({2, 0, 0.3, 1, 5, 9}); });
        row("hidden", [](QGraphicsItem* item) { item->hide(); });
        row("below an item of its own", [](QGraphicsItem* item) {
            item->setParentItem(item->scene()->addRect(0, 0, 1, 1));
            item->parentItem()->setPos(100, 0);
        });
    }

    void bandFindsElementsWhereAHostPutThem()
    {
        const auto [change] = row<Change>();
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
                const QRect inView(
                    chip.view()->mapFromScene(band.topLeft()), chip.view()->mapFromScene(band.bottomRight()));
                const QRectF inScene = chip.view()->mapToScene(inView).boundingRect();
                chip.scene()->makeItemsIn(inScene);
                for (QGraphicsItem* item : chip.scene()->items(inScene, Qt::IntersectsItemShape)) {
                    if (int loadNumber = item->data(ZEL_GRAPHIC_ITEM_Attribute_KEY).toInt())
                        expected.insert(loadNumber - 1);
                }
                chip.drag(band.topLeft(), band.bottomRight());
                QCOMPARE(chip.selected(), expected);
            }
        }
    }

    void zoomModeZoomsToTheBandOrTheElement()
    {
        ChipView chip({{1, {10, 10, 20, 20}}, {2, {70, 10, 20, 20}}});
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
        const QRectF shown = chip.shownPart();
        QVERIFY(shown.contains(QRectF(71, 11, 18, 18)) && shown.width() < 60);
    }

    void panModeScrollsWithTheMouse()
    {
        ChipView chip;
        chip.drawing.setSize(4000, 3000);
        chip.drawing.addRect(1, 0, 0, 4000, 3000);
        chip.open();
        chip.view()->centerOn(2000, 1500);
        chip.database()->getAction(ACTION_PAN)->trigger();
        QCOMPARE(chip.view()->cursor().shape(), Qt::OpenHandCursor);
        const QPoint before = chip.scrolled();
        chip.view()->scrollBy(3, -2); // one way at a time
        chip.dragPixels({200, 150}, {200 - QApplication::startDragDistance() + 1, 150}); // too short
        QCOMPARE(chip.scrolled(), before);
        chip.dragPixels({200, 150}, {140, 180});
        QCOMPARE(chip.scrolled(), before + QPoint(60, -30));
        QVERIFY(chip.selected().isEmpty());
        chip.mouse(QEvent::MouseMove, {10, 10}); // the pan ended with the release
        QCOMPARE(chip.scrolled(), before + QPoint(60, -30));
        chip.mouse(QEvent::MouseButtonPress, {200, 150});
        chip.database()->getAction(ACTION_SELECT)->trigger(); // the mode counts, not only how the gesture began
        chip.mouse(QEvent::MouseMove, {100, 150});
        QCOMPARE(chip.scrolled(), before + QPoint(60, -30));
        // A dialog opens, and the button's release is lost.
        QFocusEvent dialogOpens(QEvent::FocusOut, Qt::ActiveWindowFocusReason);
        QCoreApplication::sendEvent(chip.view(), &dialogOpens);
        chip.click({200, 150});
        QCOMPARE(chip.selected(), QSet<int>{1});
        chip.mouse(QEvent::MouseButtonPress, {200, 150});
        QCoreApplication::sendEvent(chip.view(), &dialogOpens);
        QVERIFY(!chip.view()->findChild<QRubberBand*>()->isVisible());
    }

    void otherButtonsReleaseAsPresses()
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

    void contextMenuIsTheFilter()
    {
        ChipView chip;
        chip.open();
        const QPoint position(20, 20);
        chip.mouse(QEvent::MouseButtonPress, position);
        const QList<QAction*> actions = actionsOfMenuAt(chip.view()->viewport(), position);
        QVERIFY(!actions.isEmpty());
        QCOMPARE(actions, chip.database()->getViewFilterMenu()->actions());
        QVERIFY(!chip.view()->findChild<QRubberBand*>()->isVisible());
    }
};

ZEL_TEST_MAIN(TestView)
#include "tst_view.moc"
