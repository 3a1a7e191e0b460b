// SPDX-License-Identifier: MIT
#include "placement/commandtexts.h"
#include "placement/dropquery.h"
#include "placement/placementhighlighter.h"
#include "platform/contract/zelproject.h"
#include "platform/contract/zeltrace.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/events.h"

#include <QAbstractButton>
#include <QCursor>
#include <QDrag>
#include <QGraphicsSceneDragDropEvent>
#include <QMenu>
#include <QMessageBox>
#include <QPlainTextEdit>
#include <QTimer>

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

    // Sends a drag event at a point of the scene. Returns whether it is accepted.
    template <typename Event> bool send(QPointF scenePoint)
    {
        return zeltest::drag<Event>(view()->viewport(), view()->mapFromScene(scenePoint));
    }

    bool isCountingDown() const { return database()->findChild<QTimer*>()->isActive(); }

    QStringList commands;
    int answer = 1;
};

} // namespace

class TestPlacement : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void queryTracesThreeLines()
    {
        FakeEngine engine;
        engine.allowedSites = {"7"};
        DropQuery query;
        QVERIFY(!query.isAllowed("u %2", "7")); // no engine yet
        query.setEngine(&engine);
        const Calls& trace = traceFromNowOn();
        QVERIFY(query.isAllowed("u %2", "7"));
        QCOMPARE(trace,
            (Calls{"canDrop: call ZEL engine API: canDrop()", "canDrop: The params is u %2, 7", "canDrop: end"}));
    }

    void ofTwoRowsTheFirstIsMeant()
    {
        PlacementView chip;
        chip.engine.addCell(nullptr, "u2");
        chip.window->refresh(REFRESH_TREE);
        ZelTree* tree = chip.tree();
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

    void dragOverSitesAndDrop()
    {
        PlacementView chip;
        chip.send<QDragEnterEvent>({2, 2});
        QVERIFY(chip.send<QDragMoveEvent>({20, 20}));
        QCOMPARE(chip.selected(), QSet<int>{5});
        // The text is clear of the pointer, or it would take the drop.
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

    void engineIsAskedOncePerRest()
    {
        PlacementView chip;
        auto* timer = chip.database()->findChild<QTimer*>();
        chip.database()->highlightProbPlaceItems(nullptr, 5);
        QCOMPARE(timer->interval(), 400);
        QTRY_VERIFY(timer->remainingTime() < 300);
        chip.database()->highlightProbPlaceItems(nullptr, 6);
        QVERIFY(timer->remainingTime() > 300); // started again
        QVERIFY(chip.engine.calls.empty());
        QTRY_COMPARE(chip.database()->highlightedIds().ids(), (QSet<int>{0, 12}));
        QCOMPARE(chip.engine.calls, (Calls{"canDrop top/u1 6", "showProbPlaceItem top/u1 6"}));
        QVERIFY(!timer->isActive());
        QVERIFY(chip.scene()->highlightedItemContains(12));
    }

    void refusalWhenTheTimerFiresKeepsWhatIsShown()
    {
        PlacementView chip;
        chip.database()->highlightedIds().assign({5});
        chip.database()->highlightProbPlaceItems(nullptr, 7);
        QVERIFY(chip.database()->highlightedIds().contains(5)); // a new countdown does not clear
        QTRY_VERIFY(!chip.isCountingDown());
        QCOMPARE(chip.engine.calls, Calls{"canDrop top/u1 7"});
        QCOMPARE(chip.database()->highlightedIds().ids(), QSet<int>{5});
    }

    void backgroundEndsTheHighlight()
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
        leaveDrag(chip.view()->viewport()); // what was shown last stays
        QVERIFY(!chip.database()->highlightedIds().isEmpty());
        chip.send<QDragEnterEvent>({2, 2});
        chip.send<QDropEvent>({2, 2}); // on no site
        QVERIFY(chip.commands.isEmpty() && chip.database()->highlightedIds().isEmpty());
    }

    void refusalMayEmptyTheSelection()
    {
        PlacementView chip;
        chip.database()->highlightProbPlaceItems(nullptr, 5);
        chip.engine.onCall = [&chip] { chip.tree()->clearSelection(); };
        chip.database()->onHighlightProbPlaceItems();
        QCOMPARE(chip.engine.calls, Calls{"canDrop top/u1 5"}); // and no search for nothing
        QVERIFY(chip.database()->highlightedIds().isEmpty());
    }

    void itemsOfAHostAreUnderThePointerAtOnce()
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

    void everyKindOfElementTakesItsDrop()
    {
        PlacementView chip;
        chip.answer = 0;
        // A rect, a polygon, a line; a text only ends the highlight.
        for (const auto& [loadNumber, id] :
            {std::pair(1, "5"), std::pair(4, "20"), std::pair(5, "21"), std::pair(6, "")}) {
            chip.commands.clear();
            chip.database()->highlightedIds().assign({5});
            QGraphicsSceneDragDropEvent event(QEvent::GraphicsSceneDrop);
            chip.scene()->sendEvent(chip.item(loadNumber), &event);
            const QString command = QString("zel_resource place -rsc {top/u1} -id ") + id;
            QCOMPARE(chip.commands, *id ? QStringList{command} : QStringList());
            QVERIFY(chip.database()->highlightedIds().isEmpty());
        }
    }

    void treeStartsTheDrag()
    {
        PlacementView chip;
        ZelTree* tree = chip.tree();
        const QPoint row = tree->visualItemRect(tree->topLevelItem(0)).center();
        const auto move = [&](Qt::MouseButton b) { sendMouse(tree->viewport(), QEvent::MouseMove, row, {}, b); };
        const auto drags = [tree] { return tree->findChildren<QDrag*>().size(); };
        move(Qt::LeftButton);
        QCOMPARE(drags(), 1);
        tree->topLevelItem(0)->setIcon(0, QIcon());
        tree->viewport()->setMouseTracking(true); // without it Qt tells of no such move
        move(Qt::NoButton); // neither a button nor a picture is asked for
        QCOMPARE(drags(), 2);
        tree->topLevelItem(0)->setData(0, DRAGABLE, false);
        move(Qt::LeftButton);
        tree->clearSelection();
        move(Qt::LeftButton);
        QCOMPARE(drags(), 2);
    }

    void rightButtonOpensTheRowsMenu()
    {
        PlacementView chip;
        zeltreeviewcell* leaf = chip.engine.addCell(chip.engine.addCell(nullptr, "u2"), "leaf");
        chip.engine.addCell(nullptr, "u3");
        chip.window->refresh(REFRESH_TREE);
        ZelTree* tree = chip.tree();
        tree->expandAll();
        QTreeWidgetItem* row = tree->findItems("leaf", Qt::MatchExactly | Qt::MatchRecursive).value(0);
        QVERIFY(row && !leaf->resettable);
        const auto actionsAt = [tree](QPoint position) { return actionsOfMenuAt(tree->viewport(), position).size(); };
        const QPoint leafPosition = tree->visualItemRect(row).center();
        QCOMPARE(actionsAt(tree->visualItemRect(tree->topLevelItem(0)).center()), 6);
        QCOMPARE(actionsAt(leafPosition), 0);
        row->setData(0, RESET, true);
        QCOMPARE(actionsAt(leafPosition), 1);
        QCOMPARE(actionsAt(tree->viewport()->rect().bottomLeft() - QPoint(-5, 5)), 0); // below the rows
    }

    void resetRefreshesWhenItWorked()
    {
        PlacementView chip;
        for (const int answer : {0, 1}) {
            chip.answer = answer;
            chip.commands.clear();
            chip.database()->selectedIds().assign({5});
            chip.database()->resetIP();
            QCOMPARE(chip.commands, QStringList{"zel_resource reset -ip {top/u1}"});
            QCOMPARE(chip.engine.calls, answer == 1 ? Calls{"refresh 3"} : Calls());
            QVERIFY(chip.selected().isEmpty());
        }
        chip.tree()->clearSelection();
        chip.database()->selectedIds().assign({5});
        chip.database()->resetIP(); // on no row: only forgets the selected elements
        QCOMPARE(chip.commands.size(), 1);
        QVERIFY(chip.selected().isEmpty());
    }

    void deletingAsksFirst()
    {
        PlacementView chip;
        chip.database()->selectedIds().assign({5});
        for (const auto button : {QMessageBox::No, QMessageBox::NoButton, QMessageBox::Yes}) { // none: Escape
            QString question;
            answerNextQuestion(button, &question);
            chip.database()->removeIP();
            QCOMPARE(question, "Are you sure you want to delete top/u1?");
            const bool isMeant = button == QMessageBox::Yes;
            QCOMPARE(chip.commands, isMeant ? QStringList{"zel_resource remove -ip {top/u1}"} : QStringList());
            QCOMPARE(chip.engine.calls, isMeant ? Calls{"refresh 3"} : Calls());
            QCOMPARE(chip.selected(), QSet<int>{5});
        }
    }

    void configuringAsksTheEngine()
    {
        PlacementView chip;
        chip.database()->configIP();
        QCOMPARE(chip.engine.calls, Calls{"config top/u1"}); // nothing changed, nothing refreshed
        chip.engine.configResult = 1;
        chip.engine.calls.clear();
        const Calls& trace = traceFromNowOn();
        QCOMPARE(chip.database()->configResource("top/u1"), 1);
        QCOMPARE(trace,
            (Calls{"configResource: call ZEL engine API: config()", "configResource: The params is top/u1",
                "configResource: end"}));
        setDiagTraceSink(nullptr);
        chip.database()->configIP();
        QCOMPARE(chip.engine.calls, (Calls{"config top/u1", "config top/u1", "refresh 3"}));
        QVERIFY(chip.commands.isEmpty());
    }

    void hostMayRefreshInsideTheDrop()
    {
        PlacementView chip;
        QObject::connect(chip.window.get(), &ZelChipGUI::sigRunTclCmd, this,
            [&](const QString&, int&, QString&) { chip.window->refresh(REFRESH_ALL); });
        chip.send<QDragEnterEvent>({20, 20});
        chip.send<QDragMoveEvent>({20, 20});
        chip.send<QDropEvent>({20, 20});
        QCOMPARE(chip.commands.size(), 1);
        QVERIFY(chip.tree()->selectedItems().isEmpty());
    }
};

ZEL_TEST_MAIN(TestPlacement)
#include "tst_placement.moc"
