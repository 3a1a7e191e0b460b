// SPDX-License-Identifier: MIT
#include "planning/overviewmap.h"
#include "tests/support/chipviewfixture.h"

using namespace zeltest;

namespace {

// A view of a device of 800 by 400 with two sites, in a window that shows the map after a zoom.
class MappedView : public ChipView
{
public:
    MappedView()
    {
        drawing.setSize(800, 400);
        drawing.addRect(1, 0, 0, 400, 400, 0x0000c0);
        drawing.addRect(2, 400, 0, 400, 400, 0x00c000);
        open();
        view()->setHorizontalScrollBarPolicy(Qt::ScrollBarAlwaysOff); // they would take away from what is shown
        view()->setVerticalScrollBarPolicy(Qt::ScrollBarAlwaysOff);
        window->resize(1300, 800);
        map = new OverviewMap(view());
    }

    // Shows the drawing at a multiple of the scale at which all of it fits.
    void magnify(double factor)
    {
        const QSizeF space = view()->viewport()->size();
        const double fit = std::min(space.width() / 800, space.height() / 400);
        view()->resetTransform();
        view()->scale(factor * fit, factor * fit);
        view()->centerOn(400, 200);
        rest();
    }

    static void rest()
    {
        for (int i = 0; i < 10; ++i)
            QCoreApplication::processEvents();
    }

    // Where the map shows a point of the drawing.
    [[nodiscard]] QPoint onMap(double x, double y) const
    {
        return {1 + qRound(x * (map->width() - 2) / 800), 1 + qRound(y * (map->height() - 2) / 400)};
    }

    [[nodiscard]] QColor colorOnMap(double x, double y) const { return map->grab().toImage().pixelColor(onMap(x, y)); }

    void pointer(QEvent::Type type, QPoint position) const
    {
        const Qt::MouseButtons buttons = type == QEvent::MouseButtonRelease ? Qt::NoButton : Qt::LeftButton;
        sendMouse(map, type, position, type == QEvent::MouseMove ? Qt::NoButton : Qt::LeftButton, buttons);
    }

    OverviewMap* map;
};

// Counts what an object is told.
class EventCounter : public QObject
{
public:
    explicit EventCounter(QObject* watched) { watched->installEventFilter(this); }
    bool eventFilter(QObject*, QEvent*) override
    {
        ++count;
        return false;
    }
    int count = 0;
};

} // namespace

class TestOverviewMap : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void comesWhenLittleOfTheDrawingIsShown_data()
    {
        const Rows<double, bool, bool> row;
        row("all of it", 1.0, true, false);
        row("a little more than a quarter", 3.9, true, false);
        row("less than a quarter", 4.1, true, true);
        row("hardly anything", 500.0, true, true);
        row("switched off", 8.0, false, false);
    }

    void comesWhenLittleOfTheDrawingIsShown()
    {
        const auto [magnification, isOn, isShown] = row<double, bool, bool>();
        MappedView chip;
        chip.map->setOn(isOn);
        chip.magnify(magnification);
        QCOMPARE(chip.map->isVisible(), isShown);
        QCOMPARE(chip.scene()->views().size(), 1);
        chip.map->setOn(true);
        chip.magnify(1.0);
        QVERIFY(!chip.map->isVisible());
    }

    void showsTheDrawingAndItsStates()
    {
        MappedView chip;
        chip.magnify(8.0);
        QVERIFY(chip.map->width() >= 160 && chip.map->width() <= 220);
        QCOMPARE(chip.colorOnMap(100, 200), QColor(0, 0, 0xc0));
        QCOMPARE(chip.colorOnMap(700, 200), QColor(0, 0xc0, 0));
        ZELChipViewDatabase::getInstance()->highlightedIds().insert(1);
        chip.rest();
        QCOMPARE(chip.colorOnMap(100, 200), HIGHLIGHT_COLOR);
        QCOMPARE(chip.colorOnMap(700, 200), QColor(0, 0xc0, 0));
        chip.refresh(2, {{"fill", "#c00000"}});
        chip.rest();
        QCOMPARE(chip.colorOnMap(700, 200), QColor(0xc0, 0, 0));
    }

    void pointerMovesTheView()
    {
        MappedView chip;
        chip.magnify(8.0);
        const QPointF start = chip.shownPart().center();
        chip.pointer(QEvent::MouseButtonPress, chip.onMap(400, 200));
        QCOMPARE(chip.shownPart().center(), start); // it is on the frame
        chip.pointer(QEvent::MouseMove, chip.onMap(200, 300));
        QVERIFY((chip.shownPart().center() - QPointF(200, 300)).manhattanLength() < 15);
        chip.pointer(QEvent::MouseButtonRelease, chip.onMap(200, 300));
        chip.pointer(QEvent::MouseButtonPress, chip.onMap(600, 100));
        chip.pointer(QEvent::MouseButtonRelease, chip.onMap(600, 100));
        QVERIFY((chip.shownPart().center() - QPointF(600, 100)).manhattanLength() < 15);
        QVERIFY(chip.selected().isEmpty());
        const double scale = chip.view()->transform().m11();
        turnWheel(chip.map, QPoint(5, 5), QPoint(0, 120), Qt::ControlModifier);
        QVERIFY(chip.view()->transform().m11() > scale);
    }

    void staysInItsCornerWhenTheViewScrolls()
    {
        MappedView chip;
        chip.magnify(8.0);
        const QPoint place = chip.map->pos();
        chip.view()->horizontalScrollBar()->setValue(chip.view()->horizontalScrollBar()->value() + 50);
        chip.view()->verticalScrollBar()->setValue(chip.view()->verticalScrollBar()->value() - 30);
        QCOMPARE(chip.map->pos(), place);
        chip.rest();
        QCOMPARE(chip.map->pos(), place);
        chip.window->resize(chip.window->size() - QSize(60, 40));
        chip.rest();
        QCOMPARE(chip.map->geometry().bottomRight(), chip.view()->viewport()->rect().bottomRight() - QPoint(8, 8));
    }

    void leavesRoomForOtherWidgetsAndDrags()
    {
        MappedView chip;
        chip.magnify(8.0);
        QWidget* viewport = chip.view()->viewport();
        const QRect corner = chip.map->geometry();
        QWidget other(viewport);
        other.setGeometry(QRect(corner.center(), QSize(9, 9)));
        other.show();
        chip.rest();
        QCOMPARE(chip.map->geometry().left(), viewport->width() - 1 - corner.right());
        other.hide();
        chip.rest();
        QCOMPARE(chip.map->geometry(), corner);

        drag<QDragEnterEvent>(viewport, QPoint(10, 10));
        QVERIFY(chip.map->isVisible());
        drag<QDragMoveEvent>(viewport, corner.center());
        QVERIFY(!chip.map->isVisible());
        chip.rest();
        QVERIFY(!chip.map->isVisible());
        leaveDrag(viewport);
        QVERIFY(chip.map->isVisible());
    }

    void restsWhenNothingChanges()
    {
        MappedView chip;
        chip.magnify(8.0);
        const EventCounter onMap(chip.map);
        const EventCounter onTimer(chip.map->findChild<QObject*>("later"));
        QTest::qWait(50);
        QCOMPARE(onMap.count + onTimer.count, 0);
    }

    void outlivesTheController()
    {
        MappedView chip;
        chip.magnify(8.0);
        ZELChipViewDatabase::destoryInstance();
        chip.pointer(QEvent::MouseButtonPress, QPoint(3, 3));
        chip.map->settle();
        QVERIFY(!chip.map->isVisible());
        QVERIFY(!ZELChipViewDatabase::existingInstance());
    }
};

ZEL_TEST_MAIN(TestOverviewMap)
#include "tst_overviewmap.moc"
