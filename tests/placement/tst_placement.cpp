// SPDX-License-Identifier: MIT
#include "placement/commandtexts.h"
#include "placement/dropquery.h"
#include "placement/placementhighlighter.h"
#include "platform/contract/zelproject.h"
#include "platform/contract/zeltrace.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/testmain.h"

#include <QAbstractButton>
#include <QCursor>
#include <QDragEnterEvent>
#include <QGraphicsSceneDragDropEvent>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QTimer>
#include <QTreeWidget>

using namespace zeltest;

namespace {

using Calls = std::vector<std::string>;

// Two sites that take the resource "top/u1", one that does not, and the commands that the host was sent.
class PlacementView : public ChipView
{
public:
    PlacementView()
    {
        zelproject::getInstance()->setFlowName("Implementation");
        engine.addCell(nullptr, "u1");
        engine.allowedSites = {"5", "6"};
        engine.probableSites = {"12", "abc", "12"};
        drawing.addRect(5, 10, 10, 30, 30).tooltip = "site 5";
        drawing.addRect(6, 60, 10, 30, 30);
        drawing.addRect(7, 110, 10, 30, 30);
        drawing.addPolygon(20, {{10, 60}, {40, 60}, {10, 90}});
        drawing.addLine(21, 60, 60, 90, 90);
        drawing.addText(22, "text", 110, 90, 10);
        open();
        selectRow(0);
        engine.calls.clear();
        QObject::connect(
            window.get(), &ZelChipGUI::sigRunTclCmd, window.get(), [this](const QString& command, int& ret, QString&) {
                commands.append(command);
                ret = answer;
            });
    }

    // A drag event at a point of the scene, as the window system delivers it to the viewport. Gives whether it was
    // accepted.
    template <typename Event> bool send(QPointF scenePoint)
    {
        const QPoint position = view()->mapFromScene(scenePoint);
        QCursor::setPos(view()->viewport()->mapToGlobal(position));
        Event event(position, Qt::CopyAction | Qt::MoveAction, &m_mimeData, Qt::LeftButton, Qt::NoModifier);
        event.setAccepted(false);
        QApplication::sendEvent(view()->viewport(), &event);
        return event.isAccepted();
    }

    void leave()
    {
        QDragLeaveEvent event;
        QApplication::sendEvent(view()->viewport(), &event);
    }

    bool isCountingDown() const { return database()->findChild<QTimer*>()->isActive(); }

    QStringList commands;
    int answer = 1;

private:
    QMimeData m_mimeData;
};

// Answers the question that is asked next.
void answerNextQuestion(QMessageBox::StandardButton button, QString* text)
{
    QTimer::singleShot(0, qApp, [=] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        *text = box->text();
        if (button == QMessageBox::NoButton)
            QTest::keyClick(box, Qt::Key_Escape);
        else
            box->button(button)->click();
    });
}

} // namespace

class TestPlacement : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void commandTexts_data();
    void commandTexts();
    void queryTracesThreeLines();
    void withoutARowDropsAreRefused();
    void ofTwoRowsTheFirstIsMeant();
    void dragOverSitesAndDrop();
    void dropOutsideOfSitesSendsNothing();
    void engineIsAskedOncePerRest();
    void refusalWhenTheTimerFiresKeepsWhatIsShown();
    void backgroundEndsTheHighlight();
    void refusalMayEmptyTheSelection();
    void itemsOfAHostAreUnderThePointerAtOnce();
    void everyKindOfElementTakesItsDrop_data();
    void everyKindOfElementTakesItsDrop();
    void treeStartsTheDrag();
    void rightButtonOpensTheRowsMenu();
    void resetRefreshesWhenItWorked_data();
    void resetRefreshesWhenItWorked();
    void deletingAsksFirst_data();
    void deletingAsksFirst();
    void configuringAsksTheEngine();
    void hostMayRefreshInsideTheDrop();
};

void TestPlacement::commandTexts_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("plain") << "u1";
    QTest::newRow("blanks") << "my ip";
    QTest::newRow("brackets, dollar, quotes") << "a[1]$x\"y\"";
    QTest::newRow("a place holder") << "%2 %1";
    QTest::newRow("letters beyond ASCII") << QStringLiteral("k\u00e4fer");
}

void TestPlacement::commandTexts()
{
    QFETCH(QString, name);
    QCOMPARE(commandtexts::place(name, QStringLiteral("-5")), "zel_resource place -rsc {" + name + "} -id -5");
    QCOMPARE(commandtexts::reset(name), "zel_resource reset -ip {" + name + "}");
    QCOMPARE(commandtexts::remove(name), "zel_resource remove -ip {" + name + "}");
}

void TestPlacement::queryTracesThreeLines()
{
    Calls trace;
    setDiagTraceSink(
        [&](const char* text, const char* function) { trace.push_back(std::string(function) + ": " + text); });
    FakeEngine engine;
    engine.allowedSites = {"7"};
    DropQuery query;
    QVERIFY(!query.isAllowed(QStringLiteral("u %2"), QStringLiteral("7"))); // no engine yet
    trace.clear();
    query.setEngine(&engine);
    QVERIFY(query.isAllowed(QStringLiteral("u %2"), QStringLiteral("7")));
    QCOMPARE(
        trace, (Calls{"canDrop: call ZEL engine API: canDrop()", "canDrop: The params is u %2, 7", "canDrop: end"}));
}

void TestPlacement::withoutARowDropsAreRefused()
{
    PlacementView chip;
    chip.database()->getTree(nullptr)->clearSelection();
    QVERIFY(chip.database()->canDrop(nullptr, 5));
    QCOMPARE(chip.database()->drop(5), 0);
    chip.database()->onHighlightProbPlaceItems();
    QVERIFY(chip.commands.isEmpty() && chip.engine.calls.empty());
}

void TestPlacement::ofTwoRowsTheFirstIsMeant()
{
    PlacementView chip;
    chip.engine.addCell(nullptr, "u2");
    chip.window->refresh(REFRESH_TREE);
    ZelTree* tree = chip.database()->getTree(nullptr);
    tree->setSelectionMode(QAbstractItemView::MultiSelection);
    tree->selectAll();
    const QString first = tree->getResourceName(tree->selectedItems().value(0));
    QCOMPARE(tree->selectedItems().size(), 2);
    chip.engine.calls.clear();
    QVERIFY(!chip.database()->canDrop(nullptr, 5));
    QCOMPARE(chip.engine.calls, Calls{"canDrop " + first.toStdString() + " 5"});
    chip.answer = 0; // nothing is refreshed, the rows stay
    chip.database()->drop(5);
    chip.database()->resetIP();
    QCOMPARE(chip.commands, (QStringList{commandtexts::place(first, "5"), commandtexts::reset(first)}));
}

void TestPlacement::dragOverSitesAndDrop()
{
    PlacementView chip;
    chip.send<QDragEnterEvent>({2, 2});
    QVERIFY(chip.send<QDragMoveEvent>({20, 20}));
    QCOMPARE(chip.selected(), QSet<int>{5});
    // Clear of the pointer, or the text would take the drop.
    const auto* hoverText = chip.view()->findChild<QPlainTextEdit*>();
    QVERIFY(hoverText->isVisible());
    QVERIFY((hoverText->pos() - QCursor::pos() - QPoint(30, 30)).manhattanLength() < 5);
    QVERIFY(!chip.send<QDragMoveEvent>({120, 20})); // refuses
    QVERIFY(!chip.isCountingDown());
    QVERIFY(chip.send<QDragMoveEvent>({70, 20}));
    QVERIFY(chip.selected().contains(6));
    QVERIFY(chip.isCountingDown());
    chip.send<QDropEvent>({70, 20});
    QCOMPARE(chip.commands, QStringList{"zel_resource place -rsc {top/u1} -id 6"});
    QVERIFY(!chip.isCountingDown());
    QVERIFY(!chip.selected().contains(6));
    QVERIFY(!hoverText->isVisible());
    QCOMPARE(chip.window->getDirtyFlag(), 0);
    chip.database()->onHighlightProbPlaceItems(); // no site is hovered over any more
    QCOMPARE(chip.engine.calls.back(), std::string("canDrop top/u1 -1"));
}

void TestPlacement::dropOutsideOfSitesSendsNothing()
{
    PlacementView chip;
    chip.database()->highlightedIds().assign({5});
    chip.send<QDragEnterEvent>({2, 2});
    chip.send<QDragMoveEvent>({2, 2});
    chip.send<QDropEvent>({2, 2});
    QVERIFY(chip.commands.isEmpty());
    QVERIFY(chip.database()->highlightedIds().isEmpty());
}

void TestPlacement::engineIsAskedOncePerRest()
{
    PlacementView chip;
    auto* timer = chip.database()->findChild<QTimer*>();
    chip.database()->highlightProbPlaceItems(nullptr, 5);
    QCOMPARE(timer->interval(), 400);
    QTest::qWait(100);
    chip.database()->highlightProbPlaceItems(nullptr, 6);
    QVERIFY(timer->remainingTime() > 300); // started again
    QVERIFY(chip.engine.calls.empty());
    QTRY_COMPARE(chip.database()->highlightedIds().ids(), (QSet<int>{0, 12}));
    QCOMPARE(chip.engine.calls, (Calls{"canDrop top/u1 6", "showProbPlaceItem top/u1 6"}));
    QVERIFY(!timer->isActive());
    QVERIFY(chip.scene()->highlightedItemContains(12));
}

void TestPlacement::refusalWhenTheTimerFiresKeepsWhatIsShown()
{
    PlacementView chip;
    chip.database()->highlightedIds().assign({5});
    chip.database()->highlightProbPlaceItems(nullptr, 7);
    QVERIFY(chip.database()->highlightedIds().contains(5)); // a new countdown does not clear
    QTRY_VERIFY(!chip.isCountingDown());
    QCOMPARE(chip.engine.calls, Calls{"canDrop top/u1 7"});
    QCOMPARE(chip.database()->highlightedIds().ids(), QSet<int>{5});
}

void TestPlacement::backgroundEndsTheHighlight()
{
    PlacementView chip;
    chip.send<QDragEnterEvent>({20, 20});
    chip.send<QDragMoveEvent>({20, 20});
    chip.database()->highlightedIds().assign({5, 6});
    chip.send<QDragMoveEvent>({25, 25}); // still on the site
    QVERIFY(chip.isCountingDown() && !chip.database()->highlightedIds().isEmpty());
    chip.send<QDragMoveEvent>({180, 90});
    QVERIFY(!chip.isCountingDown() && chip.database()->highlightedIds().isEmpty());
    QVERIFY(chip.selected().isEmpty());
    QVERIFY(!chip.view()->findChild<QPlainTextEdit*>()->isVisible());
    chip.database()->highlightedIds().assign({5});
    chip.leave(); // what was shown last stays
    QVERIFY(!chip.database()->highlightedIds().isEmpty());
}

void TestPlacement::refusalMayEmptyTheSelection()
{
    PlacementView chip;
    chip.database()->highlightProbPlaceItems(nullptr, 5);
    chip.engine.onCall = [&chip] { chip.database()->getTree(nullptr)->clearSelection(); };
    chip.database()->onHighlightProbPlaceItems();
    QCOMPARE(chip.engine.calls, Calls{"canDrop top/u1 5"}); // and no search for nothing
    QVERIFY(chip.database()->highlightedIds().isEmpty());
}

void TestPlacement::itemsOfAHostAreUnderThePointerAtOnce()
{
    PlacementView chip;
    QCursor::setPos(chip.view()->viewport()->mapToGlobal(chip.view()->mapFromScene(20.0, 20.0)));
    QCOMPARE(chip.database()->getCurrentDragDropItemId(), 1);
    auto* cover = new QGraphicsRectItem(0, 0, 50, 50); // the scene's
    cover->setZValue(1000);
    cover->setData(ZEL_GRAPHIC_ITEM_Attribute_KEY, 77);
    chip.scene()->addItem(cover);
    QCOMPARE(chip.database()->getCurrentDragDropItemId(), 77);
}

void TestPlacement::everyKindOfElementTakesItsDrop_data()
{
    QTest::addColumn<int>("loadNumber");
    QTest::addColumn<QStringList>("commands");
    QTest::newRow("rect") << 1 << QStringList{"zel_resource place -rsc {top/u1} -id 5"};
    QTest::newRow("polygon") << 4 << QStringList{"zel_resource place -rsc {top/u1} -id 20"};
    QTest::newRow("line") << 5 << QStringList{"zel_resource place -rsc {top/u1} -id 21"};
    QTest::newRow("a text only ends the highlight") << 6 << QStringList();
}

void TestPlacement::everyKindOfElementTakesItsDrop()
{
    QFETCH(int, loadNumber);
    PlacementView chip;
    chip.database()->highlightedIds().assign({5});
    QGraphicsSceneDragDropEvent event(QEvent::GraphicsSceneDrop);
    chip.scene()->sendEvent(chip.item(loadNumber), &event);
    QTEST(chip.commands, "commands");
    QVERIFY(chip.database()->highlightedIds().isEmpty());
}

void TestPlacement::treeStartsTheDrag()
{
    class Watch final : public QObject
    {
    public:
        bool eventFilter(QObject*, QEvent* event) override
        {
            if (event->type() == QEvent::ChildAdded && static_cast<QChildEvent*>(event)->child()->inherits("QObject"))
                ++children;
            return false;
        }
        int children = 0; // a drag is one; it cannot be told apart while it is being made
    };
    PlacementView chip;
    ZelTree* tree = chip.database()->getTree(nullptr);
    Watch watch;
    tree->installEventFilter(&watch);
    const QPoint row = tree->visualItemRect(tree->topLevelItem(0)).center();
    const auto move = [&](Qt::MouseButton button) {
        QMouseEvent event(
            QEvent::MouseMove, row, tree->viewport()->mapToGlobal(row), Qt::NoButton, button, Qt::NoModifier);
        QApplication::sendEvent(tree->viewport(), &event);
    };
    move(Qt::LeftButton);
    QCOMPARE(watch.children, 1);
    tree->topLevelItem(0)->setIcon(0, QIcon());
    tree->viewport()->setMouseTracking(true); // without it Qt tells of no such move
    move(Qt::NoButton); // neither a button nor a picture is asked for
    QCOMPARE(watch.children, 2);
    tree->topLevelItem(0)->setData(0, DRAGABLE, false);
    move(Qt::LeftButton);
    tree->clearSelection();
    move(Qt::LeftButton);
    QCOMPARE(watch.children, 2);
}

void TestPlacement::rightButtonOpensTheRowsMenu()
{
    PlacementView chip;
    zeltreeviewcell* leaf = chip.engine.addCell(chip.engine.addCell(nullptr, "u2"), "leaf");
    chip.engine.addCell(nullptr, "u3");
    chip.window->refresh(REFRESH_TREE);
    ZelTree* tree = chip.database()->getTree(nullptr);
    tree->expandAll();
    QTreeWidgetItem* row = tree->findItems(QStringLiteral("leaf"), Qt::MatchExactly | Qt::MatchRecursive).value(0);
    QVERIFY(row && !leaf->resettable);
    const auto menuAt = [&](QPoint position) {
        QStringList menu;
        QTimer::singleShot(0, qApp, [&] {
            if (auto* popup = qobject_cast<QMenu*>(QApplication::activePopupWidget())) {
                const QList<QAction*> actions = popup->actions();
                for (const QAction* action : actions)
                    menu.append(action->text());
                popup->close();
            }
        });
        QContextMenuEvent event(QContextMenuEvent::Mouse, position, tree->viewport()->mapToGlobal(position));
        QApplication::sendEvent(tree->viewport(), &event);
        QCoreApplication::processEvents();
        return menu;
    };
    const QPoint leafPosition = tree->visualItemRect(row).center();
    const QStringList all{"Reset", "Delete", "Config", QString(), "Expand", "Collapse"};
    QCOMPARE(menuAt(tree->visualItemRect(tree->topLevelItem(0)).center()), all);
    QCOMPARE(menuAt(leafPosition), QStringList());
    row->setData(0, RESET, true);
    QCOMPARE(menuAt(leafPosition), QStringList{"Reset"});
    QCOMPARE(menuAt(tree->viewport()->rect().bottomLeft() - QPoint(-5, 5)), QStringList()); // below the rows
}

void TestPlacement::resetRefreshesWhenItWorked_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("isRefreshed");
    QTest::newRow("worked") << 1 << true;
    QTest::newRow("failed") << 0 << false;
}

void TestPlacement::resetRefreshesWhenItWorked()
{
    QFETCH(int, answer);
    QFETCH(bool, isRefreshed);
    PlacementView chip;
    chip.answer = answer;
    chip.database()->selectedIds().assign({5});
    chip.database()->resetIP();
    QCOMPARE(chip.commands, QStringList{"zel_resource reset -ip {top/u1}"});
    QCOMPARE(chip.engine.calls, isRefreshed ? Calls{"refresh 3"} : Calls());
    QVERIFY(chip.selected().isEmpty());
    chip.database()->getTree(nullptr)->clearSelection();
    chip.database()->selectedIds().assign({5});
    chip.database()->resetIP(); // on no row: only forgets the selected elements
    QCOMPARE(chip.commands.size(), 1);
    QVERIFY(chip.selected().isEmpty());
}

void TestPlacement::deletingAsksFirst_data()
{
    QTest::addColumn<int>("button");
    QTest::addColumn<QStringList>("commands");
    QTest::newRow("yes") << int(QMessageBox::Yes) << QStringList{"zel_resource remove -ip {top/u1}"};
    QTest::newRow("no") << int(QMessageBox::No) << QStringList();
    QTest::newRow("Escape") << int(QMessageBox::NoButton) << QStringList();
}

void TestPlacement::deletingAsksFirst()
{
    QFETCH(int, button);
    PlacementView chip;
    chip.database()->selectedIds().assign({5});
    QString question;
    answerNextQuestion(static_cast<QMessageBox::StandardButton>(button), &question);
    chip.database()->removeIP();
    QCOMPARE(question, QStringLiteral("Are you sure you want to delete top/u1?"));
    QTEST(chip.commands, "commands");
    QCOMPARE(chip.engine.calls, chip.commands.isEmpty() ? Calls() : Calls{"refresh 3"});
    QCOMPARE(chip.selected(), QSet<int>{5});
}

void TestPlacement::configuringAsksTheEngine()
{
    PlacementView chip;
    chip.database()->configIP();
    QCOMPARE(chip.engine.calls, Calls{"config top/u1"}); // nothing changed, nothing refreshed
    chip.engine.configResult = 1;
    chip.engine.calls.clear();
    Calls trace;
    setDiagTraceSink(
        [&](const char* text, const char* function) { trace.push_back(std::string(function) + ": " + text); });
    QCOMPARE(chip.database()->configResource(QStringLiteral("top/u1")), 1);
    QCOMPARE(trace,
        (Calls{"configResource: call ZEL engine API: config()", "configResource: The params is top/u1",
            "configResource: end"}));
    setDiagTraceSink(nullptr);
    chip.database()->configIP();
    QCOMPARE(chip.engine.calls, (Calls{"config top/u1", "config top/u1", "refresh 3"}));
    QVERIFY(chip.commands.isEmpty());
}

void TestPlacement::hostMayRefreshInsideTheDrop()
{
    PlacementView chip;
    QObject::connect(chip.window.get(), &ZelChipGUI::sigRunTclCmd, this,
        [&](const QString&, int&, QString&) { chip.window->refresh(REFRESH_ALL); });
    chip.send<QDragEnterEvent>({20, 20});
    chip.send<QDragMoveEvent>({20, 20});
    chip.send<QDropEvent>({20, 20});
    QCOMPARE(chip.commands.size(), 1);
    QVERIFY(chip.database()->getTree(nullptr)->selectedItems().isEmpty());
}

ZEL_TEST_MAIN(TestPlacement)
#include "tst_placement.moc"
