// SPDX-License-Identifier: MIT
#include "platform/contract/zelproject.h"
#include "resources/zelrestable.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/events.h"

#include <QAbstractButton>
#include <QAction>
#include <QCheckBox>
#include <QComboBox>
#include <QDialog>
#include <QMenu>
#include <QMessageBox>
#include <QTimer>

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
        writeFile(QFile::decodeName(engine.device.filter.c_str()), "\"site\" 7\n");
    }
};

// A full chip view that is open and has been used.
class UsedChipView : public FullChipView
{
public:
    UsedChipView()
    {
        open();
        window->refresh(REFRESH_ALL);
        window->expandAllTreeItems();
        selectRow(0);
        database()->highlightProbPlaceItems(nullptr, 7);
        picture();
    }
};

// A view that is ended while one of its dialogs stands; the dialog is then answered.
class EndingView : public FullChipView
{
public:
    explicit EndingView(const QString& order)
        : m_order(order.split(", "))
    {
        zelproject::getInstance()->setFlowName("Implementation");
        engine.sitesWithDialog = {"7"};
        engine.dialogValues = std::make_unique<std::map<std::string, std::vector<std::string>>>();
        (*engine.dialogValues)["CH0"] = {"A", "B"};
        engine.configResult = 1;
        m_window = new ZelChipGUI(&engine, m_parent.get()); // the parent's
        m_window->initGrahpicView();
        m_parent->show();
        selectRow(0);
        engine.calls.clear();
    }

    // Returns when it is closed.
    void openDialog(const QString& name)
    {
        engine.onCall = [this] { end(); };
        if (name == "config") {
            database()->configIP();
            return;
        }
        QTimer::singleShot(0, qApp, [this, name] { name.startsWith("command") ? chooseDelete() : endAndAnswer(); });
        const QTreeWidget* tree = database()->getTree(nullptr);
        const QPoint site = view()->mapFromScene(20.0, 20.0);
        if (name == "question")
            database()->removeIP();
        else if (name == "settings")
            QTest::mouseDClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, site);
        else if (name == "filter menu")
            openMenu(view()->viewport(), site);
        else
            openMenu(tree->viewport(), tree->visualItemRect(tree->topLevelItem(0)).center());
    }

private:
    void chooseDelete()
    {
        QTimer::singleShot(0, qApp, [this] { endAndAnswer(); });
        auto* menu = qobject_cast<QMenu*>(QApplication::activePopupWidget());
        const QPoint position = menu->actionGeometry(menu->actions().value(1)).center();
        QTest::mouseClick(menu, Qt::LeftButton, Qt::NoModifier, position);
    }

    void endAndAnswer()
    {
        QPointer<QWidget> modal(QApplication::activeModalWidget());
        if (!modal && !QApplication::activePopupWidget())
            qFatal("nothing was opened");
        end();
        if (auto* question = qobject_cast<QMessageBox*>(modal.data())) {
            question->button(QMessageBox::Yes)->click();
        } else if (auto* settings = qobject_cast<QDialog*>(modal.data())) {
            settings->findChild<QComboBox*>("comboBoxCH0")->setCurrentIndex(1);
            settings->accept();
        } else if (QWidget* popup = QApplication::activePopupWidget()) {
            popup->close();
        }
    }

    void end()
    {
        for (const QString& part : m_order) {
            if (part == "window")
                delete m_window;
            else if (part == "parent")
                m_parent.reset();
            else if (part == "controller")
                ZELChipViewDatabase::destoryInstance();
            else
                createWindow();
        }
    }

    const QStringList m_order;
    std::unique_ptr<QWidget> m_parent = std::make_unique<QWidget>();
    QPointer<ZelChipGUI> m_window;
};

} // namespace

// Each order in which a host may end things. What they assert is little: that nothing is freed twice, used after it
// was freed, or left behind is the sanitizers' to say.
class TestOwnership : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void windowThenController()
    {
        UsedChipView chip;
        QPointer<ZelGraphicsScene> scene(chip.scene());
        QPointer<ZelTree> tree(chip.tree());
        QPointer<ZelGraphicsView> view(chip.view());
        QPointer<ZelResTable> table(chip.database()->getResTable(nullptr));
        const auto* timer = chip.database()->findChild<QTimer*>();
        QVERIFY(timer->isActive());
        chip.database()->highlightedIds().assign({7});
        chip.window.reset();
        QVERIFY(scene && tree && !view && !table);
        QVERIFY(!timer->isActive());
        QVERIFY(chip.database()->highlightedIds().isEmpty()); // nor is it lit in the next window
        ZELChipViewDatabase::destoryInstance();
        QVERIFY(!scene && !tree);
    }

    void controllerThenWindow()
    {
        UsedChipView chip;
        QPointer<ZelGraphicsView> view(chip.view());
        ZELChipViewDatabase::destoryInstance();
        QVERIFY(view && !view->scene());
        QCoreApplication::processEvents();
        chip.window->zoomIn();
        chip.window->zoomFit();
        chip.window->zoomTo();
        chip.window->expandAllTreeItems();
        chip.window->collapseAllTreeItems();
        chip.window.reset();
        QVERIFY(!ZELChipViewDatabase::existingInstance());
    }

    void oneWindowAfterTheOther()
    {
        UsedChipView chip;
        ZelGraphicsScene* scene = chip.scene();
        chip.database()->getAction(ACTION_PAN)->trigger();
        chip.window.reset();
        chip.open(); // the controller goes on, with the scene and its elements
        QCOMPARE(chip.scene(), scene);
        QCOMPARE(chip.view()->cursor().shape(), Qt::OpenHandCursor); // the mouse mode is the controller's, too
        QCOMPARE(chip.window->centralWidget(), static_cast<QWidget*>(chip.view()));
        QCOMPARE(chip.view()->scene(), static_cast<QGraphicsScene*>(scene));
        QCOMPARE(chip.colorAt({12, 25}).rgb(), 0xff808080u);
        QCOMPARE(chip.tree()->topLevelItemCount(), 2);
        QVERIFY(chip.window->isAncestorOf(chip.tree()));
        QMenu* menu = chip.database()->getViewFilterMenu(); // the one before died with its view
        QCOMPARE(chip.database()->getAction(ACTION_FILTER)->menu(), menu);
        menu->findChild<QCheckBox*>()->click();
        QCOMPARE(chip.database()->filteredIds().ids(), QSet<int>{7});
    }

    void twoWindowsAtOnce()
    {
        for (const bool isFirstDeletedFirst : {true, false}) {
            UsedChipView chip;
            auto second = std::make_unique<ZelChipGUI>(&chip.engine, nullptr);
            second->show();
            QCOMPARE(second->centralWidget(), static_cast<QWidget*>(chip.view())); // shared: the second has it now
            (isFirstDeletedFirst ? chip.window : second).reset();
            QCoreApplication::processEvents();
            ZELChipViewDatabase::getInstance()->refresh(REFRESH_ALL);
            (isFirstDeletedFirst ? second : chip.window).reset();
        }
    }

    void drawingLoadedTwice()
    {
        UsedChipView chip;
        QPointer<ZELGraphicItemAttribute> replaced(chip.attribute(1));
        QVERIFY(chip.window->initGrahpicView());
        QVERIFY(replaced && replaced != chip.attribute(1));
        QCOMPARE(chip.scene()->items().size(), 10);
        chip.database()->selectedIds().insert(7);
        chip.picture();
        chip.window.reset();
        ZELChipViewDatabase::destoryInstance();
        QVERIFY(!replaced);
    }

    void viewWithoutControllerMakesNone()
    {
        UsedChipView chip;
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
        openMenu(viewport, point);
        turnWheel(viewport, point, QPoint(0, 120), Qt::ControlModifier);
        drag<QDragEnterEvent>(viewport, point);
        drag<QDragMoveEvent>(viewport, point);
        drag<QDropEvent>(viewport, point);
        viewport->grab();
        view->zoomIn();
        view->zoomOut();
        view->zoomFit();
        view->zoomTo(nullptr);
        view->setTransform({});
        view->setCurrentScale(2.0);
        QCOMPARE(view->transform().m11(), 2.0);
        QVERIFY(!ZELChipViewDatabase::existingInstance());
    }

    void treeDiesWithItsRowsShown()
    {
        UsedChipView chip;
        delete chip.tree();
        QCOMPARE(chip.database()->canDrop(nullptr, 7), true);
        QCOMPARE(chip.database()->drop(7), 0);
        chip.database()->onHighlightProbPlaceItems();
        chip.window->refresh(REFRESH_ALL);
        QCOMPARE(chip.database()->getTree(chip.window.get())->topLevelItemCount(), 2);
    }

    // The user's answer then changes nothing any more, neither in this view nor in the next one.
    void viewEndsBelowItsDialogs_data()
    {
        const Rows<QString, QString> row;
        for (const char* dialog :
            {"question", "command of the menu", "config", "settings", "tree menu", "filter menu"}) {
            for (const char* order : {"window, controller", "controller, window", "parent, controller",
                     "controller, parent", "window, controller, new ones", "controller", "window"})
                row((std::string(dialog) + ": " + order).c_str(), dialog, order);
        }
    }

    void viewEndsBelowItsDialogs()
    {
        const auto [dialog, order] = row<QString, QString>();
        EndingView chip(order);
        QStringList commands;
        connect(chip.database(), &ZELChipViewDatabase::sigRunTclCmd, this,
            [&commands](const QString& command, int& ret, const QString&) {
                commands.append(command);
                ret = 1;
            });
        chip.openDialog(dialog);
        const bool isControllerLeft = order == "window";
        QCOMPARE(ZELChipViewDatabase::existingInstance() != nullptr, isControllerLeft || order.endsWith("new ones"));
        if (!isControllerLeft) {
            QCOMPARE(commands, QStringList());
            QCOMPARE(chip.engine.calls, std::vector<std::string>(dialog == "config" ? 1 : 0, "config top/ip2"));
        }
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
};

ZEL_TEST_MAIN(TestOwnership)
#include "tst_ownership.moc"
