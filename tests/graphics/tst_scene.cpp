// SPDX-License-Identifier: MIT
#include "graphics/hovertext.h"
#include "graphics/sceneelements.h"
#include "tests/support/chipviewfixture.h"

#include <QGraphicsRectItem>
#include <QGraphicsSceneDragDropEvent>
#include <QPaintEvent>
#include <QPlainTextEdit>
#include <QWindow>

#include <functional>
#include <limits>
#include <utility>

using namespace zeltest;

namespace {

// Watches which parts of a widget are painted.
class PaintWatch final : public QObject
{
public:
    explicit PaintWatch(QWidget* widget)
        : m_widget(widget)
    {
        widget->installEventFilter(this);
        settle();
    }

    void settle()
    {
        for (int turn = 0; turn < 100 && !takeArea().isEmpty(); ++turn) { }
    }

    bool eventFilter(QObject*, QEvent* event) override
    {
        if (event->type() == QEvent::Paint)
            m_area += static_cast<QPaintEvent*>(event)->region();
        return false;
    }

    // Returns what was painted since the last time and what is due now: a pixel is updated, and everything due is
    // painted with it.
    QRegion takeArea()
    {
        const QRect pixel(m_widget->rect().bottomRight(), QSize(1, 1));
        QCoreApplication::processEvents();
        m_area -= pixel;
        m_widget->update(pixel);
        if (!QTest::qWaitFor([&] { return m_area.contains(pixel); }))
            qFatal("nothing is painted");
        return std::exchange(m_area, {}) - pixel;
    }

private:
    QWidget* const m_widget;
    QRegion m_area;
};

// A host's deed before the state of an element changes.
using Step = std::function<void(ChipView&)>;

} // namespace

class TestScene : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void refreshAppliesAndRestoresDynamicValues()
    {
        ChipView chip;
        chip.drawing.addRect(7, 10, 10, 40, 40).tooltip = "free";
        chip.drawing.addText(7, "label", 60, 50, 10).fillColor = 0x010203;
        chip.drawing.addRect(8, 60, 10, 40, 40);
        chip.open();
        auto* rect = chip.attribute(1);
        auto* text = chip.attribute(2);

        chip.refresh(7, {{"fill", "#FF0000"}, {"tovanel:popup", "occupied"}});
        QCOMPARE(chip.colorAt({30, 30}), QColor(Qt::red));
        QCOMPARE(rect->toolTip, "occupied");
        QCOMPARE(text->toolTip, "occupied");
        QCOMPARE(chip.fillOf(2), 0x010203u);

        chip.engine.device.clearRecords();
        chip.window->refresh(REFRESH_GRAPHIC);
        QCOMPARE(chip.colorAt({30, 30}), QColor(Qt::red)); // without any value everything stays as it is

        chip.refresh(7, {});
        QCOMPARE(chip.colorAt({30, 30}).rgb(), 0xff808080u);
        QCOMPARE(rect->toolTip, "free");
        QCOMPARE(text->toolTip, "occupied");

        const std::pair<const char*, unsigned int> oddValues[] = {
            {"#00ff7f", 0x00ff7f}, {"x00ff7e", 0x00ff7e}, // the first character is dropped whatever it is
            {"#green!", 0}, {"#ff7d", 0x00ff7d}, {"", 0}, // no number is black, nor is the empty text absent
        };
        chip.engine.device.addRecord(4711, {{"fill", "#ff0000"}}); // of no element
        for (const auto& [value, colour] : oddValues) {
            chip.refresh(7, {{"fill", value}});
            QCOMPARE(chip.fillOf(1), colour);
            QCOMPARE(chip.fillOf(3), 0x808080u);
        }
    }

    void selectingNeedsAnAttribute()
    {
        ChipView chip({{7, {10, 10, 40, 40}}});
        QGraphicsRectItem stranger;
        stranger.setData(ZEL_GRAPHIC_ITEM_Attribute_KEY, 99);
        chip.scene()->addSelectedItem(nullptr);
        chip.scene()->addSelectedItem(&stranger);
        QVERIFY(chip.selected().isEmpty());
        chip.scene()->addSelectedItem({&stranger, nullptr, chip.item(1)});
        QCOMPARE(chip.selected(), QSet<int>{7});
        QVERIFY(chip.scene()->selectedItemContains(7) && !chip.scene()->highlightedItemContains(7));
        QVERIFY(chip.scene()->filterdItemContains(12345)); // while the filter is off, every id
        QVERIFY(!chip.scene()->statesOf(12345).testFlag(ElementState::Filtered));
    }

    void idleWindowPaintsNothing()
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
        PaintWatch paints(chip.view()->viewport());
        chip.view()->zoomIn();
        QVERIFY(!paints.takeArea().isEmpty());
        for (int turn = 0; turn < 5; ++turn)
            QCOMPARE(paints.takeArea(), QRegion());
        chip.window->refresh(REFRESH_GRAPHIC); // with nothing new
        QCOMPARE(paints.takeArea(), QRegion());
    }

    void stateChangesRepaintOnlyWhatChanged()
    {
        ChipView chip;
        chip.drawing.addRect(7, 10, 10, 20, 20).strokeWidth = 2;
        chip.drawing.addRect(8, 150, 60, 20, 20);
        chip.open();
        PaintWatch paints(chip.view()->viewport());
        const auto isRepainted = [&] {
            const QRectF area = chip.view()->mapToScene(paints.takeArea().boundingRect()).boundingRect();
            return area.contains(QRectF(11, 11, 18, 18)) && QRectF(5, 5, 30, 30).contains(area);
        };
        chip.database()->selectedIds().insert(7);
        QVERIFY(isRepainted());
        chip.database()->highlightedIds().assign({7});
        QVERIFY(isRepainted());
        chip.database()->selectedIds().insert(7); // is selected already
        chip.database()->highlightedIds().assign({7});
        QCOMPARE(paints.takeArea(), QRegion());
    }

    void stateChangesAreRepaintedWhateverAHostDid_data()
    {
        const Rows<int, Step, Step, Step> row; // further elements; before the first paint, at rest, a moment before
        const Step nothing = [](ChipView&) {};
        const auto addItem = [](ChipView& chip) { chip.scene()->addRect(0, 0, 5, 5); };
        const auto scroll = [](ChipView& chip) { chip.view()->verticalScrollBar()->setValue(90); };
        const auto move = [](ChipView& chip) { chip.item(1)->moveBy(-110, -80); };
        const auto grow = [=](ChipView& chip) { addItem(chip), chip.window->resize(1300, 900); };
        row("nothing", 0, nothing, nothing, nothing);
        row("nothing, where Qt is told of no change", 6000, nothing, nothing, nothing);
        row("put an item in before the first paint", 0, addItem, nothing, nothing);
        row("moved the element", 0, nothing, move, nothing);
        row("let the window grow while Qt paints", 0, nothing, grow, nothing);
        row("scrolled", 0, nothing, nothing, scroll);
        row("scrolled while Qt paints", 0, addItem, scroll, nothing);
    }

    void stateChangesAreRepaintedWhateverAHostDid()
    {
        const auto [more, beforeTheFirstPaint, atRest, aMomentBefore] = row<int, Step, Step, Step>();
        ChipView chip;
        chip.drawing.setSize(1200, 1200);
        chip.drawing.addRect(7, 310, 290, 40, 30);
        chip.drawing.addRect(8, 10, 10, 40, 40);
        for (int i = 0; i < 20; ++i)
            chip.drawing.addRect(7, 520 + 20 * i, 400 + 15 * i, 12, 9); // some of them come into sight by growing
        for (int i = 0; i < more; ++i)
            chip.drawing.addRect(9, 60, 60, 1, 1);
        chip.createWindow();
        QVERIFY(chip.window->initGrahpicView());
        beforeTheFirstPaint(chip);
        chip.window->resize(700, 500);
        chip.window->show();
        PaintWatch paints(chip.view()->viewport());
        atRest(chip);
        paints.settle();
        aMomentBefore(chip);
        chip.database()->highlightedIds().assign({7});
        QRegion expected;
        for (QGraphicsItem* item : chip.scene()->itemsOf(7))
            expected += chip.view()->mapFromScene(item->sceneBoundingRect()).boundingRect();
        expected &= chip.view()->viewport()->rect();
        QVERIFY(!expected.isEmpty());
        QCOMPARE(expected - paints.takeArea(), QRegion());
        chip.database()->highlightedIds().clear();
        QCOMPARE(expected - paints.takeArea(), QRegion());
    }

    void whatLeavesIsRepaintedBesideTheDrawing()
    {
        ChipView chip({{7, {10, 10, 40, 40}}});
        auto* item = chip.scene()->addRect(-40, -40, 60, 60); // a host's
        PaintWatch paints(chip.view()->viewport());
        const QRegion beside(chip.view()->mapFromScene(QRectF(-30, -30, 20, 20)).boundingRect());
        QVERIFY((beside - QRegion(chip.view()->viewport()->rect())).isEmpty());
        delete item;
        QVERIFY((beside - paints.takeArea()).isEmpty());
    }

    void anotherDrawingUnderTheSameNumbers()
    {
        ChipView chip;
        zel_Rect& rect = chip.drawing.addRect(7, 10, 10, 40, 40);
        chip.open();
        rect.id = 8;
        chip.window->initGrahpicView();
        chip.refresh(7, {{"fill", "#ff0000"}});
        QCOMPARE(chip.colorAt({30, 30}).rgb(), 0xff808080u);
        QCOMPARE(chip.fillOf(1), 0x808080u);
        chip.engine.device.addRecord(8, {{"fill", "#00ff00"}});
        chip.refresh(8, {{"fill", "#0000ff"}}); // the later of two records counts
        QCOMPARE(chip.colorAt({30, 30}), QColor(Qt::blue));
    }

    void elementsThatLeaveAreForgotten()
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

    void hoverTextFollowsTheDragAndGoesWithIt()
    {
        ChipView chip({{7, {10, 10, 20, 20}}});
        auto* hoverText = chip.view()->findChild<QPlainTextEdit*>();
        const auto send = [&](QEvent::Type type) {
            QGraphicsSceneDragDropEvent event(type);
            event.setScreenPos({200, 100});
            QApplication::sendEvent(chip.scene(), &event);
        };
        chip.database()->hoverText().show("site", nullptr);
        QVERIFY(hoverText->isWindow() && hoverText->size() == QSize(150, 30));
        QVERIFY(hoverText->windowHandle()->flags() & Qt::WindowTransparentForInput);
        QVERIFY(!chip.view()->viewport()->testAttribute(Qt::WA_NativeWindow)); // nor any other widget of the window
        send(QEvent::GraphicsSceneDragMove);
        QCOMPARE(hoverText->pos(), QPoint(230, 130));
        send(QEvent::GraphicsSceneDragLeave);
        QVERIFY(!hoverText->isVisible());
        chip.database()->hoverText().show("site", nullptr);
        send(QEvent::GraphicsSceneDrop);
        QVERIFY(!hoverText->isVisible());
        chip.database()->hoverText().show(QString(), nullptr);
        QVERIFY(!hoverText->isVisible());
    }
};

ZEL_TEST_MAIN(TestScene)
#include "tst_scene.moc"
