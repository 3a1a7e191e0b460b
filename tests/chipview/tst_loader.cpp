// SPDX-License-Identifier: MIT
#include "platform/contract/svgparser.h"
#include "platform/contract/zeltrace.h"
#include "tests/support/cancellingprogress.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/testmain.h"

#include <QAction>
#include <QMenu>

#include <algorithm>

using namespace zeltest;

namespace {

// Collects the debug lines until it ends.
class DebugLog
{
public:
    DebugLog()
    {
        TRQDebug::getInstance()->setSink(
            [this](const std::string& text, const std::string& mode) { lines.push_back(mode + " " + text); });
    }
    ~DebugLog() { TRQDebug::getInstance()->setSink(nullptr); }

    std::vector<std::string> lines;
};

constexpr int Many = 5000; // more than are loaded between two steps

void addManyRects(Drawing& drawing)
{
    for (int i = 0; i < Many; ++i)
        drawing.addRect(i, i % 100, i / 100, 1, 1);
}

} // namespace

class TestLoader : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void numbersElementsInOrder();
    void skippedRecordsUseUpNoNumber();
    void emptyDrawingSetsTheViewUp();
    void withoutAProjectNothingHappens_data();
    void withoutAProjectNothingHappens();
    void logsWhatItDoes_data();
    void logsWhatItDoes();
    void failedParserStillShowsWhatItHas();
    void reportsHowFarItIs();
    void cancelledLoadLeavesNothing_data();
    void cancelledLoadLeavesNothing();
    void cancelledLoadLeavesTheOneBefore();
    void knowsHowQtPolishesItems();
};

void TestLoader::numbersElementsInOrder()
{
    ChipView chip;
    chip.drawing.addRect(500, 10, 10, 20, 20);
    chip.drawing.addText(400, "x", 10, 10, 5);
    chip.drawing.addLine(-1, 0, 0, 10, 10);
    chip.open();
    const QList<int> ids{500, 400, -1};
    for (int number = 1; number <= 3; ++number) {
        const auto* attribute = chip.database()->getGraphicItemAttribute(number);
        QCOMPARE(attribute->itemId, ids[number - 1]);
        QCOMPARE(attribute->sequence, number);
        QCOMPARE(chip.item(number)->zValue(), double(number));
    }
}

void TestLoader::skippedRecordsUseUpNoNumber()
{
    ChipView chip;
    chip.drawing.addLine(1, 0, 0, 10, 10);
    chip.drawing.addUnknown(9);
    chip.drawing.addUnknown(ZEL_GRAPHIC_RECT); // says rect and is none
    chip.drawing.records.push_back(nullptr);
    chip.drawing.addRect(2, 0, 0, 10, 10);
    chip.open();
    QCOMPARE(chip.scene()->items().size(), 2);
    QCOMPARE(chip.database()->getGraphicItemAttribute(2)->itemId, 2);
    QCOMPARE(chip.item(2)->zValue(), 2.0);
}

void TestLoader::emptyDrawingSetsTheViewUp()
{
    ChipView chip;
    chip.drawing.parameter.width = 321;
    chip.drawing.parameter.height = 123;
    chip.drawing.parameter.initialScale = 0.5;
    chip.drawing.parameter.layerRanges = {{4, {0.5, 0.5}}};
    chip.open();
    QCOMPARE(chip.scene()->sceneRect(), QRectF(0, 0, 321, 123));
    QCOMPARE(chip.view()->currentScale(), 0.5);
    QCOMPARE(chip.view()->transform().m11(), 0.5);
    QCOMPARE(chip.view()->getVisibleLayers(), QList<int>{4});
    QCOMPARE(chip.engine.calls, std::vector<std::string>{"refresh 1"});
}

void TestLoader::withoutAProjectNothingHappens_data()
{
    QTest::addColumn<bool>("hasProject");
    QTest::newRow("no project") << false;
    QTest::newRow("no implementation of the default's name") << true;
}

void TestLoader::withoutAProjectNothingHappens()
{
    QFETCH(bool, hasProject);
    ChipView chip;
    chip.drawing.addRect(7, 0, 0, 10, 10);
    chip.engine.device.drawing = "chip.svg";
    if (hasProject)
        MirnProjectManager::getProjectManager()->getProject()->setDefaultImplementation("other");
    else
        MirnProjectManager::getProjectManager()->setProject(nullptr);
    chip.createWindow();
    chip.engine.calls.clear();
    DebugLog log;
    QVERIFY(!chip.window->initGrahpicView());
    QCOMPARE(log.lines, std::vector<std::string>{"a ZelChipGUI::initGrahpicView svfgile: chip.svg"});
    QVERIFY(chip.scene()->items().isEmpty());
    QVERIFY(chip.view()->getVisibleLayers().isEmpty());
    QVERIFY(chip.engine.calls.empty());
}

void TestLoader::logsWhatItDoes_data()
{
    QTest::addColumn<bool>("isLoaded");
    QTest::addColumn<QByteArray>("word");
    QTest::newRow("success") << true << QByteArray("FINISHED");
    QTest::newRow("failure") << false << QByteArray("FAILED");
}

void TestLoader::logsWhatItDoes()
{
    QFETCH(bool, isLoaded);
    QFETCH(QByteArray, word);
    ChipView chip;
    chip.drawing.install(isLoaded);
    chip.engine.device.drawing = "/d/chip %1.svg";
    chip.createWindow();
    DebugLog log;
    QVERIFY(chip.window->initGrahpicView());
    const std::string path = QFile::encodeName(chip.folder.path()).toStdString() + "/zelsvg.temp";
    const std::string prefix = "a ZelChipGUI::initGrahpicView ";
    QCOMPARE(log.lines,
        (std::vector<std::string>{prefix + "svfgile: /d/chip %1.svg", prefix + "filePath: " + path,
            prefix + "loadSVGElements " + word.toStdString() + "  " + path}));
}

void TestLoader::failedParserStillShowsWhatItHas()
{
    ChipView chip;
    chip.drawing.install(false);
    chip.drawing.addRect(7, 10, 10, 20, 20);
    chip.open();
    QCOMPARE(chip.colorAt({20, 20}).rgb(), 0xff808080u);
}

void TestLoader::reportsHowFarItIs()
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
    QCOMPARE(static_cast<int>(chip.scene()->items().size()), Many);
}

void TestLoader::cancelledLoadLeavesNothing_data()
{
    QTest::addColumn<double>("share");
    QTest::newRow("at once") << 0.0;
    QTest::newRow("while items are made") << 0.2;
    QTest::newRow("while they are added to the scene") << 0.7;
}

void TestLoader::cancelledLoadLeavesNothing()
{
    QFETCH(double, share);
    ChipView chip;
    addManyRects(chip.drawing);
    chip.createWindow();
    {
        const CancellingProgress progress(zelprogress::BUILDING_VIEW, share);
        QVERIFY(chip.window->initGrahpicView());
        QVERIFY(progress.isCancelled());
    }
    QVERIFY(chip.scene()->items().isEmpty());
    for (int number : {1, 1000, 2000, Many})
        QCOMPARE(chip.database()->getGraphicItemAttribute(number), static_cast<ZELGraphicItemAttribute*>(nullptr));
    QVERIFY(chip.view()->updatesEnabled());
    QVERIFY(chip.window->initGrahpicView());
    QCOMPARE(static_cast<int>(chip.scene()->items().size()), Many);
}

// A drawing loaded on top of another one.
void TestLoader::cancelledLoadLeavesTheOneBefore()
{
    ChipView chip;
    chip.drawing.addRect(500, 10, 10, 20, 20);
    chip.open();
    const ZELGraphicItemAttribute* before = chip.database()->getGraphicItemAttribute(1);
    addManyRects(chip.drawing);
    const CancellingProgress progress(zelprogress::BUILDING_VIEW, 0.7);
    QVERIFY(chip.window->initGrahpicView());
    QCOMPARE(static_cast<int>(chip.scene()->items().size()), 1);
    QCOMPARE(chip.database()->getGraphicItemAttribute(1), before);
    QCOMPARE(chip.item(1)->sceneBoundingRect().center(), QPointF(20, 20));
}

// Without it a large drawing is slow to close before it was shown, which no other test would notice.
void TestLoader::knowsHowQtPolishesItems()
{
    QVERIFY(QGraphicsScene().metaObject()->indexOfMethod("_q_polishItems()") >= 0);
}

ZEL_TEST_MAIN(TestLoader)
#include "tst_loader.moc"
