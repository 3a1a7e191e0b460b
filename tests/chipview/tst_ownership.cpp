// SPDX-License-Identifier: MIT
#include "resources/zelrestable.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/testmain.h"

#include <QAction>
#include <QCheckBox>
#include <QDragEnterEvent>
#include <QMenu>
#include <QMimeData>
#include <QTimer>
#include <QVBoxLayout>
#include <QWheelEvent>

using namespace zeltest;

namespace {

// A chip view with something in every corner: elements that are shown and that are not, rows, menus, a running timer.
class FullChipView : public ChipView
{
public:
    FullChipView()
    {
        drawing.addRect(7, 10, 10, 20, 20);
        drawing.addLine(8, 0, 0, 50, 50);
        drawing.addPolygon(9, {{0, 0}, {10, 0}, {0, 10}});
        drawing.addText(10, "label", 20, 20, 5);
        drawing.addText(11, "hidden", 20, 20, 5).layer = 9;
        zeltreeviewcell* ip = engine.addCell(nullptr, "ip1", "IP", "7");
        engine.addCell(engine.addCell(ip, "ch0"), "lane");
        engine.addCell(nullptr, "ip2");
        engine.allowedSites = {"7"};
        QFile filter(QFile::decodeName(engine.device.filter.c_str()));
        if (filter.open(QIODevice::WriteOnly))
            filter.write("\"site\" 7\n");
    }

    void openAndUse()
    {
        open();
        window->refresh(REFRESH_ALL);
        window->expandAllTreeItems();
        selectRow(0);
        database()->highlightProbPlaceItems(nullptr, 7);
        picture();
    }
};

} // namespace

// Each order in which a host may end things. What they assert is little: that nothing is freed twice, used after it
// was freed, or left behind is the sanitizers' to say.
class TestOwnership : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void windowThenController();
    void controllerThenWindow();
    void oneWindowAfterTheOther();
    void twoWindowsAtOnce_data();
    void twoWindowsAtOnce();
    void drawingLoadedTwice();
    void windowInsideTheHostsWindow();
    void windowDiesWhileTheHighlightTimerRuns();
    void endingWindowMakesNoController();
    void viewWithoutControllerMakesNone();
    void treeDiesWithItsRowsShown();
    void filterMenuDiesWithTheView();
};

void TestOwnership::windowThenController()
{
    FullChipView chip;
    chip.openAndUse();
    QPointer<ZelGraphicsScene> scene(chip.scene());
    QPointer<ZelTree> tree(chip.database()->getTree(nullptr));
    QPointer<ZelGraphicsView> view(chip.view());
    QPointer<ZelResTable> table(chip.database()->getResTable(nullptr));
    chip.window.reset();
    QVERIFY(scene && tree && !view && !table);
    ZELChipViewDatabase::destoryInstance();
    QVERIFY(!scene && !tree);
}

void TestOwnership::controllerThenWindow()
{
    FullChipView chip;
    chip.openAndUse();
    QPointer<ZelGraphicsView> view(chip.view());
    ZELChipViewDatabase::destoryInstance();
    QVERIFY(view && !view->scene());
    QCoreApplication::processEvents();
    chip.window->zoomIn();
    chip.window->zoomFit();
    chip.window->expandAllTreeItems();
    chip.window.reset();
    QVERIFY(!ZELChipViewDatabase::existingInstance());
}

void TestOwnership::oneWindowAfterTheOther()
{
    FullChipView chip;
    chip.openAndUse();
    ZelGraphicsScene* scene = chip.scene();
    chip.window.reset();
    chip.open(); // the controller goes on, with the scene and its elements
    QCOMPARE(chip.scene(), scene);
    QCOMPARE(chip.window->centralWidget(), static_cast<QWidget*>(chip.view()));
    QCOMPARE(chip.view()->scene(), static_cast<QGraphicsScene*>(scene));
    QCOMPARE(chip.colorAt({12, 25}).rgb(), 0xff808080u);
    QCOMPARE(chip.database()->getTree(nullptr)->topLevelItemCount(), 2);
    QVERIFY(chip.window->isAncestorOf(chip.database()->getTree(nullptr)));
}

void TestOwnership::twoWindowsAtOnce_data()
{
    QTest::addColumn<bool>("isFirstDeletedFirst");
    QTest::newRow("the first goes first") << true;
    QTest::newRow("the second goes first") << false;
}

void TestOwnership::twoWindowsAtOnce()
{
    QFETCH(bool, isFirstDeletedFirst);
    FullChipView chip;
    chip.openAndUse();
    auto second = std::make_unique<ZelChipGUI>(&chip.engine, nullptr);
    second->show();
    QCOMPARE(second->centralWidget(), static_cast<QWidget*>(chip.view())); // shared: the second has it now
    if (isFirstDeletedFirst)
        chip.window.reset();
    else
        second.reset();
    QCoreApplication::processEvents();
    ZELChipViewDatabase::getInstance()->refresh(REFRESH_ALL);
    (isFirstDeletedFirst ? second : chip.window).reset();
}

void TestOwnership::drawingLoadedTwice()
{
    FullChipView chip;
    chip.openAndUse();
    QPointer<ZELGraphicItemAttribute> replaced(chip.database()->getGraphicItemAttribute(1));
    QVERIFY(chip.window->initGrahpicView());
    QVERIFY(replaced && replaced != chip.database()->getGraphicItemAttribute(1));
    QCOMPARE(chip.scene()->items().size(), 10);
    chip.database()->selectedIds().insert(7);
    chip.picture();
    chip.window.reset();
    ZELChipViewDatabase::destoryInstance();
    QVERIFY(!replaced);
}

void TestOwnership::windowInsideTheHostsWindow()
{
    FullChipView chip;
    auto host = std::make_unique<QWidget>();
    auto* layout = new QVBoxLayout(host.get());
    auto* window = new ZelChipGUI(&chip.engine, host.get()); // the host's child
    window->setWindowFlags(Qt::Widget);
    layout->addWidget(window);
    window->initGrahpicView();
    host->show();
    QVERIFY(!window->isWindow());
    QPointer<ZelTree> tree(chip.database()->getTree(nullptr));
    host.reset();
    QVERIFY(tree);
}

void TestOwnership::windowDiesWhileTheHighlightTimerRuns()
{
    FullChipView chip;
    chip.openAndUse();
    auto* timer = chip.database()->findChild<QTimer*>();
    QVERIFY(timer->isActive());
    chip.window.reset();
    QVERIFY(!timer->isActive());
}

void TestOwnership::endingWindowMakesNoController()
{
    ChipView chip;
    chip.createWindow();
    ZELChipViewDatabase::destoryInstance();
    chip.window->expandAllTreeItems();
    chip.window->collapseAllTreeItems();
    chip.window->zoomTo();
    chip.window.reset();
    QVERIFY(!ZELChipViewDatabase::existingInstance());
}

void TestOwnership::viewWithoutControllerMakesNone()
{
    FullChipView chip;
    chip.openAndUse();
    ZelGraphicsView* view = chip.view();
    QWidget* viewport = view->viewport();
    ZELChipViewDatabase::destoryInstance();
    const QPoint point(20, 20);
    for (Qt::MouseButton button : {Qt::LeftButton, Qt::RightButton}) {
        QTest::mouseDClick(viewport, button, Qt::NoModifier, point);
        QTest::mousePress(viewport, button, Qt::NoModifier, point);
        QTest::mouseMove(viewport, point * 2);
        QTest::mouseRelease(viewport, button, Qt::NoModifier, point * 2);
    }
    for (int key : {Qt::Key_Plus, Qt::Key_Minus, Qt::Key_Left, Qt::Key_Escape})
        QTest::keyClick(view, static_cast<Qt::Key>(key));
    const QPoint global = viewport->mapToGlobal(point);
    QContextMenuEvent menu(QContextMenuEvent::Mouse, point, global);
    QWheelEvent wheel(
        point, global, QPoint(), QPoint(0, 120), Qt::NoButton, Qt::ControlModifier, Qt::NoScrollPhase, false);
    QMimeData data;
    QDragEnterEvent enter(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QDragMoveEvent move(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    QDropEvent drop(point, Qt::CopyAction, &data, Qt::LeftButton, Qt::NoModifier);
    for (QEvent* event : std::initializer_list<QEvent*>{&menu, &wheel, &enter, &move, &drop})
        QApplication::sendEvent(viewport, event);
    viewport->grab();
    QVERIFY(!ZELChipViewDatabase::existingInstance());
}

void TestOwnership::treeDiesWithItsRowsShown()
{
    FullChipView chip;
    chip.openAndUse();
    delete chip.database()->getTree(nullptr);
    QCOMPARE(chip.database()->canDrop(nullptr, 7), true);
    QCOMPARE(chip.database()->drop(7), 0);
    chip.database()->onHighlightProbPlaceItems();
    chip.window->refresh(REFRESH_ALL);
    QCOMPARE(chip.database()->getTree(chip.window.get())->topLevelItemCount(), 2);
}

void TestOwnership::filterMenuDiesWithTheView()
{
    FullChipView chip;
    chip.openAndUse();
    chip.window.reset();
    chip.open();
    QMenu* menu = chip.database()->getViewFilterMenu();
    QVERIFY(menu);
    auto* all = menu->findChild<QCheckBox*>();
    QVERIFY(all);
    all->click();
    QCOMPARE(chip.database()->filteredIds().ids(), QSet<int>{7});
    QCOMPARE(chip.database()->getAction(ACTION_FILTER)->menu(), menu);
}

ZEL_TEST_MAIN(TestOwnership)
#include "tst_ownership.moc"
