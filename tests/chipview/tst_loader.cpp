// SPDX-License-Identifier: MIT
#include "graphics/elements/chipelement.h"
#include "graphics/zelrectattribute.h"
#include "planning/elementprobe.h"
#include "planning/siteplaces.h"
#include "platform/contract/svgparser.h"
#include "platform/contract/zeltrace.h"
#include "tests/support/cancellingprogress.h"
#include "tests/support/chipviewfixture.h"

#include <algorithm>
#include <functional>

using namespace zeltest;

namespace {

// The debug lines from now on to the end of the test function, each behind its mode.
const std::vector<std::string>& debugFromNowOn()
{
    static std::vector<std::string> lines;
    lines.clear();
    TRQDebug::getInstance()->setSink(
        [](const std::string& text, const std::string& mode) { lines.push_back(mode + " " + text); });
    return lines;
}

constexpr int Many = 5000; // more than are loaded between two steps

void addManyRects(Drawing& drawing)
{
    for (int i = 0; i < Many; ++i)
        drawing.addRect(i, i % 100, i / 100, 1, 1);
}

} // namespace

Q_DECLARE_METATYPE(std::function<void(ChipView&)>)

class TestLoader : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    // Records that are skipped use up no number.
    void numbersElementsInOrder()
    {
        ChipView chip;
        chip.drawing.addRect(500, 10, 10, 20, 20);
        chip.drawing.addUnknown(9);
        chip.drawing.addUnknown(ZEL_GRAPHIC_RECT); // says rect and is none
        chip.drawing.records.push_back(nullptr);
        chip.drawing.addText(400, "x", 10, 10, 5);
        chip.drawing.addLine(-1, 0, 0, 10, 10);
        chip.open();
        QCOMPARE(chip.scene()->items().size(), 3);
        const QList<int> ids{500, 400, -1};
        for (int number = 1; number <= 3; ++number) {
            const auto* attribute = chip.attribute(number);
            QCOMPARE(attribute->itemId, ids[number - 1]);
            QCOMPARE(attribute->sequence, number);
            QCOMPARE(chip.item(number)->zValue(), double(number));
        }
    }

    void emptyDrawingSetsTheViewUp()
    {
        ChipView chip;
        chip.drawing.setSize(321, 123);
        chip.drawing.parameter.initialScale = 0.5;
        chip.drawing.parameter.layerRanges = {{4, {0.5, 0.5}}};
        chip.open();
        QCOMPARE(chip.scene()->sceneRect(), QRectF(0, 0, 321, 123));
        QCOMPARE(chip.view()->currentScale(), 0.5);
        QCOMPARE(chip.view()->transform().m11(), 0.5);
        QCOMPARE(chip.view()->getVisibleLayers(), QList<int>{4});
        QCOMPARE(chip.engine.calls, std::vector<std::string>{"refresh 1"});
    }

    void withoutAProjectNothingHappens()
    {
        ChipView chip;
        chip.drawing.addRect(7, 0, 0, 10, 10);
        chip.engine.device.drawing = "chip.svg";
        chip.createWindow();
        chip.engine.calls.clear();
        MirnProjectManager::getProjectManager()->getProject()->setDefaultImplementation("other");
        for (int round = 0; round < 2; ++round) {
            const std::vector<std::string>& lines = debugFromNowOn();
            QVERIFY(!chip.window->initGrahpicView());
            QCOMPARE(lines, std::vector<std::string>{"a ZelChipGUI::initGrahpicView svfgile: chip.svg"});
            QVERIFY(chip.scene()->items().isEmpty());
            QVERIFY(chip.view()->getVisibleLayers().isEmpty());
            QVERIFY(chip.engine.calls.empty());
            MirnProjectManager::getProjectManager()->setProject(nullptr); // nor without any project
        }
    }

    // A drawing that is read in part is shown as far as it was.
    void logsWhatItDoes()
    {
        for (const bool isLoaded : {true, false}) {
            ChipView chip;
            chip.drawing.install(isLoaded);
            chip.drawing.addRect(7, 10, 10, 20, 20);
            chip.engine.device.drawing = "/d/chip %1.svg";
            const std::vector<std::string>& lines = debugFromNowOn();
            chip.open();
            const std::string path = QFile::encodeName(chip.folder.path()).toStdString() + "/zelsvg.temp";
            const std::string prefix = "a ZelChipGUI::initGrahpicView ";
            QCOMPARE(lines,
                (std::vector<std::string>{prefix + "svfgile: /d/chip %1.svg", prefix + "filePath: " + path,
                    prefix + "loadSVGElements " + (isLoaded ? "FINISHED" : "FAILED") + "  " + path}));
            QCOMPARE(chip.colorAt({20, 20}).rgb(), 0xff808080u);
        }
    }

    void reportsHowFarItIs()
    {
        ChipView chip;
        addManyRects(chip.drawing);
        chip.createWindow();
        const CancellingProgress progress(zelprogress::BUILDING_VIEW, 2.0);
        QVERIFY(chip.window->initGrahpicView());
        const std::vector<double>& shares = progress.shares(zelprogress::BUILDING_VIEW);
        QVERIFY(shares.size() > 4);
        QVERIFY(std::is_sorted(shares.begin(), shares.end()));
        QVERIFY(shares.front() >= 0.0 && shares.front() < 0.2 && shares.back() > 0.8 && shares.back() <= 1.0);
        QVERIFY(!progress.isCancelled());
        QCOMPARE(chip.scene()->elementCount(), Many);
    }

    void cancelledLoadLeavesNothing()
    {
        for (const double share : {0.0, 0.2, 0.7}) { // at once, while items are made, while the scene gets them
            ChipView chip;
            addManyRects(chip.drawing);
            chip.createWindow();
            {
                const CancellingProgress progress(zelprogress::BUILDING_VIEW, share);
                QVERIFY(chip.window->initGrahpicView());
                QVERIFY(progress.isCancelled());
            }
            QVERIFY(chip.scene()->items().isEmpty() && chip.scene()->elementCount() == 0);
            for (int number : {1, 1000, 2000, Many})
                QVERIFY(!chip.attribute(number));
            QVERIFY(chip.view()->updatesEnabled());
            QVERIFY(chip.window->initGrahpicView());
            QCOMPARE(chip.scene()->elementCount(), Many);
        }
    }

    // A drawing loaded on top of another one.
    void cancelledLoadLeavesTheOneBefore()
    {
        ChipView chip({{500, {10, 10, 20, 20}}});
        const ZELGraphicItemAttribute* before = chip.attribute(1);
        addManyRects(chip.drawing);
        const CancellingProgress progress(zelprogress::BUILDING_VIEW, 0.7);
        QVERIFY(chip.window->initGrahpicView());
        QCOMPARE(chip.scene()->elementCount(), 1);
        QCOMPARE(chip.attribute(1), before);
        QCOMPARE(chip.item(1)->sceneBoundingRect().center(), QPointF(20, 20));
    }

    void itemsAreMadeOnDemand_data()
    {
        using Act = std::function<void(ChipView&)>;
        QTest::addColumn<Act>("act");
        QTest::addColumn<int>("made"); // items that there are then
        const auto row = [](const char* name, int made, const Act& act) { QTest::newRow(name) << act << made; };
        row("nothing is asked", 0, [](ChipView&) {});
        row("painting and zooming", 0, [](ChipView& chip) {
            (void)chip.picture();
            chip.window->zoomIn();
            (void)chip.picture();
        });
        row("selecting by a band, across a line and a text", 2, [](ChipView& chip) { chip.drag({1, 1}, {150, 80}); });
        row("refreshing", 0, [](ChipView& chip) { chip.window->refresh(REFRESH_GRAPHIC); });
        row("a click", 1, [](ChipView& chip) { chip.click({20, 20}); });
        row("looking at sites", 0, [](ChipView& chip) {
            const auto idAt = [&chip](double x, double y) {
                const auto* element = elementAt(*chip.view(), chip.view()->mapFromScene(QPointF(x, y)));
                return element ? element->itemId : 0;
            };
            QCOMPARE(idAt(20, 20), 1);
            QCOMPARE(idAt(80, 20), 3);
            QCOMPARE(idAt(5, 5), 0);
        });
        row("an element's colour", 1, [](ChipView& chip) { chip.refresh(3, {{"fill", "#ff0000"}}); });
        row("an element's items", 2, [](ChipView& chip) { (void)chip.scene()->itemsOf(5); });
        row("where sites are", 0, [](ChipView& chip) { (void)visiblePlaces(*chip.scene(), {1, 5}); });
        row("an attribute", 1, [](ChipView& chip) { (void)chip.attribute(2); });
        row("an area, where the text may reach, too", 3, [](ChipView& chip) {
            chip.scene()->makeItemsIn({40, 15, 60, 4});
        });
        row("a change of the order", 6, [](ChipView& chip) {
            chip.scene()->itemsOf(1).first()->setZValue(9);
            (void)chip.picture();
        });
        row("an item of the host", 6 + 1, [](ChipView& chip) {
            chip.scene()->addRect(1, 1, 9, 9);
            QCoreApplication::processEvents();
            (void)chip.picture();
        });
        row("a host's own attribute", 6, [](ChipView& chip) {
            chip.database()->setGraphicAttribute(2, new ZELRectAttribute(0, 0, 1, 1, 0, 0, 0, {}));
            const auto* element = dynamic_cast<ChipElement*>(chip.item(2));
            QVERIFY(element->attribute() != chip.attribute(2)); // an item keeps the one that it was loaded with
            const_cast<ZELGraphicItemAttribute*>(element->attribute())->setParent(chip.scene());
        });
        row("a second load", 2 * 6, [](ChipView& chip) { (void)chip.window->initGrahpicView(); });
    }
    void itemsAreMadeOnDemand()
    {
        QFETCH(std::function<void(ChipView&)>, act);
        ChipView chip;
        for (int id = 1; id <= 4; ++id)
            chip.drawing.addRect(id, 30 * id - 20, 10, 20, 20);
        chip.drawing.addLine(5, 10, 60, 190, 60);
        chip.drawing.addText(5, "text", 10, 70, 8);
        chip.createWindow();
        chip.window->setItemsOnDemand(true);
        QVERIFY(chip.window->initGrahpicView());
        chip.window->resize(700, 500);
        chip.window->show();
        QCoreApplication::processEvents();
        act(chip);
        QTEST(static_cast<int>(chip.scene()->items().size()), "made");
    }

    // Without that slot a large drawing is slow to close before it was shown, which no other test would notice.
    void knowsHowQtPolishesItems() { QVERIFY(QGraphicsScene().metaObject()->indexOfMethod("_q_polishItems()") >= 0); }
};

ZEL_TEST_MAIN(TestLoader)
#include "tst_loader.moc"
