// SPDX-License-Identifier: MIT
#include "graphics/hovertext.h"
#include "graphics/sceneelements.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/testmain.h"

#include <QGraphicsRectItem>
#include <QGraphicsSceneDragDropEvent>
#include <QPaintEvent>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QWindow>

#include <functional>
#include <limits>
#include <utility>

using namespace zeltest;

namespace {

// Counts the paint events of a widget and what they cover.
class PaintCounter final : public QObject
{
public:
    explicit PaintCounter(QWidget* widget) { widget->installEventFilter(this); }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint) {
            ++count;
            area += static_cast<QPaintEvent*>(event)->region();
        }
        return false;
    }

    // Runs the event loop until nothing was painted for some turns.
    void settle()
    {
        int before = -1;
        for (int quietTurns = 0, turns = 0; quietTurns < 5 && turns < 500; ++quietTurns, ++turns) {
            if (std::exchange(before, count) != count)
                quietTurns = 0;
            QTest::qWait(1);
        }
        count = 0;
        area = QRegion();
    }

    int count = 0;
    QRegion area;
};

// What a host does before the state of an element changes.
using Step = std::function<void(ChipView&)>;

} // namespace

Q_DECLARE_METATYPE(Step)

class TestScene : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void refreshAppliesAndRestoresDynamicValues();
    void refreshOfOddValues_data();
    void refreshOfOddValues();
    void filterAnswersEveryIdWhileItIsOff();
    void selectingNeedsAnAttribute();
    void idleWindowPaintsNothing();
    void stateChangesRepaintOnlyWhatChanged();
    void stateChangesAreRepaintedWhateverAHostDid_data();
    void stateChangesAreRepaintedWhateverAHostDid();
    void whatLeavesIsRepaintedBesideTheDrawing();
    void anotherDrawingUnderTheSameNumbers();
    void elementsThatLeaveAreForgotten();
    void hoverTextFollowsTheDragAndGoesWithIt();
};

void TestScene::refreshAppliesAndRestoresDynamicValues()
{
    ChipView chip;
    chip.drawing.addRect(7, 10, 10, 40, 40).tooltip = "free";
    chip.drawing.addText(7, "label", 60, 50, 10).fillColor = 0x010203;
    chip.open();
    auto* rect = chip.database()->getGraphicItemAttribute(1);
    auto* text = chip.database()->getGraphicItemAttribute(2);
    const auto textFill = [&] { return *static_cast<unsigned int*>(text->getAttribute(ATTR_FILL_COLOR)); };

    chip.engine.device.addRecord(7, {{"fill", "#FF0000"}, {"tovanel:popup", "occupied"}});
    chip.window->refresh(REFRESH_GRAPHIC);
    QCOMPARE(chip.colorAt({30, 30}), QColor(Qt::red));
    QCOMPARE(rect->toolTip, QStringLiteral("occupied"));
    QCOMPARE(text->toolTip, QStringLiteral("occupied"));
    QCOMPARE(textFill(), 0x010203u);

    chip.engine.device.clearRecords();
    chip.window->refresh(REFRESH_GRAPHIC);
    QCOMPARE(chip.colorAt({30, 30}), QColor(Qt::red)); // without any value everything stays as it is

    chip.engine.device.addRecord(7, {});
    chip.window->refresh(REFRESH_GRAPHIC);
    QCOMPARE(chip.colorAt({30, 30}).rgb(), 0xff808080u);
    QCOMPARE(rect->toolTip, QStringLiteral("free"));
    QCOMPARE(text->toolTip, QStringLiteral("occupied"));
}

void TestScene::refreshOfOddValues_data()
{
    QTest::addColumn<QByteArray>("fill");
    QTest::addColumn<unsigned int>("colour");
    QTest::newRow("lower case") << QByteArray("#00ff7f") << 0x00ff7fu;
    QTest::newRow("the first character is dropped whatever it is") << QByteArray("x00ff7f") << 0x00ff7fu;
    QTest::newRow("no number is black") << QByteArray("#green!") << 0u;
    QTest::newRow("empty is black, not absent") << QByteArray("") << 0u;
}

void TestScene::refreshOfOddValues()
{
    QFETCH(QByteArray, fill);
    ChipView chip;
    chip.drawing.addRect(7, 10, 10, 40, 40);
    chip.drawing.addRect(8, 60, 10, 40, 40);
    chip.engine.device.addRecord(7, {{"fill", fill.toStdString()}});
    chip.engine.device.addRecord(4711, {{"fill", "#ff0000"}});
    chip.open();
    const auto fillOf = [&](int loadNumber) {
        return *static_cast<unsigned int*>(
            chip.database()->getGraphicItemAttribute(loadNumber)->getAttribute(ATTR_FILL_COLOR));
    };
    QTEST(fillOf(1), "colour");
    QCOMPARE(fillOf(2), 0x808080u);
}

void TestScene::filterAnswersEveryIdWhileItIsOff()
{
    ChipView chip;
    chip.open();
    QVERIFY(!chip.database()->isFilterEnable());
    QVERIFY(chip.scene()->filterdItemContains(12345));
    QVERIFY(!chip.scene()->statesOf(12345).testFlag(ElementState::Filtered));
    QVERIFY(!chip.scene()->highlightedItemContains(12345));
}

void TestScene::selectingNeedsAnAttribute()
{
    ChipView chip;
    chip.drawing.addRect(7, 10, 10, 40, 40);
    chip.open();
    QGraphicsRectItem stranger;
    stranger.setData(ZEL_GRAPHIC_ITEM_Attribute_KEY, 99);
    chip.scene()->addSelectedItem(nullptr);
    chip.scene()->addSelectedItem(&stranger);
    QVERIFY(chip.selected().isEmpty());
    chip.scene()->addSelectedItem({&stranger, nullptr, chip.item(1)});
    QCOMPARE(chip.selected(), QSet<int>{7});
    QVERIFY(chip.scene()->selectedItemContains(7));
}

void TestScene::idleWindowPaintsNothing()
{
    ChipView chip;
    for (int i = 0; i < 50; ++i) {
        chip.drawing.addRect(i, i * 4, 10, 3, 60).strokeWidth = 0.5;
        chip.drawing.addLine(100 + i, i * 4, 75, i * 4 + 3, 95, 1.0);
        chip.drawing.addText(200 + i, "x", i * 4, 95, 4);
    }
    // A document rewrites the characters of the one; the coordinates of the other are equal to nothing.
    chip.drawing.addText(300, "12\xa0MHz\r\n", 50, 50, 10);
    chip.drawing.addLine(301, 0, 0, std::numeric_limits<double>::quiet_NaN(), 10);
    chip.open();
    PaintCounter paints(chip.view()->viewport());
    paints.settle();
    chip.view()->zoomIn();
    paints.settle();
    QTest::qWait(50);
    QCOMPARE(paints.count, 0);
    chip.window->refresh(REFRESH_GRAPHIC); // with nothing new
    QTest::qWait(50);
    QCOMPARE(paints.count, 0);
}

void TestScene::stateChangesRepaintOnlyWhatChanged()
{
    ChipView chip;
    chip.drawing.addRect(7, 10, 10, 20, 20).strokeWidth = 2;
    chip.drawing.addRect(8, 150, 60, 20, 20);
    chip.open();
    PaintCounter paints(chip.view()->viewport());
    paints.settle();
    const auto repaintedArea = [&] {
        QTest::qWait(20);
        return chip.view()->mapToScene(paints.area.boundingRect()).boundingRect();
    };
    const QRectF around7(5, 5, 30, 30);

    chip.database()->selectedIds().insert(7);
    QVERIFY(repaintedArea().contains(QRectF(11, 11, 18, 18)));
    QVERIFY(around7.contains(repaintedArea()));
    paints.settle();

    chip.database()->highlightedIds().assign({7});
    QVERIFY(repaintedArea().contains(QRectF(11, 11, 18, 18)));
    QVERIFY(around7.contains(repaintedArea()));
    paints.settle();

    chip.database()->selectedIds().insert(7); // is selected already
    chip.database()->highlightedIds().assign({7});
    QTest::qWait(20);
    QCOMPARE(paints.count, 0);
}

void TestScene::stateChangesAreRepaintedWhateverAHostDid_data()
{
    QTest::addColumn<Step>("beforeTheFirstPaint");
    QTest::addColumn<Step>("atRest");
    QTest::addColumn<Step>("aMomentBefore");
    const Step nothing = [](ChipView&) {};
    const auto addItem = [](ChipView& chip) { chip.scene()->addRect(0, 0, 5, 5); };
    const auto scroll = [](ChipView& chip) { chip.view()->verticalScrollBar()->setValue(90); };
    QTest::newRow("nothing") << nothing << nothing << nothing;
    QTest::newRow("put an item in before the first paint") << Step(addItem) << nothing << nothing;
    QTest::newRow("moved the element") << nothing << Step([](ChipView& c) { c.item(1)->moveBy(-110, -80); }) << nothing;
    QTest::newRow("let the window grow while Qt paints")
        << nothing << Step([=](ChipView& chip) { addItem(chip), chip.window->resize(1300, 900); }) << nothing;
    QTest::newRow("scrolled") << nothing << nothing << Step(scroll);
    QTest::newRow("scrolled while Qt paints") << Step(addItem) << Step(scroll) << nothing;
}

void TestScene::stateChangesAreRepaintedWhateverAHostDid()
{
    QFETCH(Step, beforeTheFirstPaint);
    QFETCH(Step, atRest);
    QFETCH(Step, aMomentBefore);
    ChipView chip;
    chip.drawing.parameter.width = chip.drawing.parameter.height = 1200;
    chip.drawing.addRect(7, 310, 290, 40, 30);
    chip.drawing.addRect(8, 10, 10, 40, 40);
    for (int i = 0; i < 20; ++i)
        chip.drawing.addRect(7, 520 + 20 * i, 400 + 15 * i, 12, 9); // some of them come into sight by growing
    chip.createWindow();
    QVERIFY(chip.window->initGrahpicView());
    beforeTheFirstPaint(chip);
    chip.window->resize(700, 500);
    chip.window->show();
    PaintCounter paints(chip.view()->viewport());
    paints.settle();
    atRest(chip);
    paints.settle();
    aMomentBefore(chip);
    chip.database()->highlightedIds().assign({7});
    QRegion expected;
    for (QGraphicsItem* item : chip.scene()->itemsOf(7))
        expected += chip.view()->mapFromScene(item->sceneBoundingRect()).boundingRect();
    expected &= chip.view()->viewport()->rect();
    QVERIFY(!expected.isEmpty());
    QTRY_VERIFY((expected - paints.area).isEmpty());
    paints.settle();
    chip.database()->highlightedIds().clear();
    QTRY_VERIFY((expected - paints.area).isEmpty());
}

void TestScene::whatLeavesIsRepaintedBesideTheDrawing()
{
    ChipView chip;
    chip.drawing.addRect(7, 10, 10, 40, 40);
    chip.open();
    auto* item = chip.scene()->addRect(-40, -40, 60, 60); // a host's
    PaintCounter paints(chip.view()->viewport());
    paints.settle();
    const QRegion beside(chip.view()->mapFromScene(QRectF(-30, -30, 20, 20)).boundingRect());
    QVERIFY((beside - QRegion(chip.view()->viewport()->rect())).isEmpty());
    delete item;
    QTRY_VERIFY((beside - paints.area).isEmpty());
}

void TestScene::anotherDrawingUnderTheSameNumbers()
{
    ChipView chip;
    zel_Rect& rect = chip.drawing.addRect(7, 10, 10, 40, 40);
    chip.open();
    rect.id = 8;
    chip.window->initGrahpicView();
    chip.engine.device.addRecord(7, {{"fill", "#ff0000"}});
    chip.window->refresh(REFRESH_GRAPHIC);
    QCOMPARE(chip.colorAt({30, 30}).rgb(), 0xff808080u);
    chip.engine.device.addRecord(8, {{"fill", "#00ff00"}});
    chip.engine.device.addRecord(8, {{"fill", "#0000ff"}}); // the later of two records counts
    chip.window->refresh(REFRESH_GRAPHIC);
    QCOMPARE(chip.colorAt({30, 30}), QColor(Qt::blue));
}

void TestScene::elementsThatLeaveAreForgotten()
{
    ChipView chip;
    chip.drawing.addRect(7, 10, 10, 20, 20);
    chip.drawing.addLine(7, 10, 40, 30, 40).layer = 9; // hidden: still waits for its geometry
    chip.drawing.addText(7, "x", 10, 60, 10);
    chip.open();
    QCOMPARE(chip.scene()->elements().index().elements(7).size(), std::size_t(3));
    QGraphicsItem* moved = chip.item(1);
    chip.scene()->removeItem(moved);
    QCOMPARE(chip.scene()->elements().index().elements(7).size(), std::size_t(2));
    chip.scene()->addItem(moved);
    QCOMPARE(chip.scene()->elements().index().elements(7).size(), std::size_t(3));
    chip.scene()->clear();
    QVERIFY(chip.scene()->elements().index().elements(7).empty());
    QVERIFY(chip.scene()->elements().index().takePending({0, 9}).empty());
    chip.database()->selectedIds().insert(7); // must reach no item that is gone
}

void TestScene::hoverTextFollowsTheDragAndGoesWithIt()
{
    ChipView chip;
    chip.drawing.addRect(7, 10, 10, 20, 20);
    chip.open();
    auto* hoverText = chip.view()->findChild<QPlainTextEdit*>();
    const auto send = [&](QEvent::Type type) {
        QGraphicsSceneDragDropEvent event(type);
        event.setScreenPos({200, 100});
        QApplication::sendEvent(chip.scene(), &event);
    };
    chip.database()->hoverText().show(QStringLiteral("site"), nullptr);
    QVERIFY(hoverText->windowHandle()->flags() & Qt::WindowTransparentForInput);
    QVERIFY(!chip.view()->viewport()->testAttribute(Qt::WA_NativeWindow)); // nor any other widget of the window
    send(QEvent::GraphicsSceneDragMove);
    QCOMPARE(hoverText->pos(), QPoint(230, 130));
    send(QEvent::GraphicsSceneDragLeave);
    QVERIFY(!hoverText->isVisible());
    chip.database()->hoverText().show(QStringLiteral("site"), nullptr);
    chip.database()->highlightedIds().assign({7});
    send(QEvent::GraphicsSceneDrop);
    QVERIFY(!hoverText->isVisible());
    QVERIFY(chip.database()->highlightedIds().isEmpty());
    chip.database()->hoverText().show(QString(), nullptr);
    QVERIFY(!hoverText->isVisible());
}

ZEL_TEST_MAIN(TestScene)
#include "tst_scene.moc"
