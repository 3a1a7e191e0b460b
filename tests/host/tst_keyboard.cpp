// SPDX-License-Identifier: MIT
#include "graphics/zelgraphicsscene.h"
#include "host/widgets/findbox.h"
#include "planning/siteplaces.h"
#include "tests/host/shownwindow.h"
#include "tests/program/sampleproject.h"
#include "tests/support/testmain.h"

#include <QAccessible>
#include <QApplication>
#include <QContextMenuEvent>
#include <QDialog>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStatusBar>
#include <QTableWidget>
#include <QTimer>

using namespace mirn::zelchip;
using namespace mirn::zelchipview;

namespace {

const QString Video = "gateway/clocks/pll_video"; // not placed
constexpr int FreePll = 5002001; // PLL_TL1, beside the nearest PLL of the same folder

// The window on the sample project, and what a person or a screen reader does with it.
class Desk : public ShownWindow
{
public:
    Desk()
    {
        show(project.path(), {1300, 900});
        QApplication::setActiveWindow(window.get());
        chipView()->expandAllTreeItems();
        QTest::qWait(0); // the order of Tab follows the docks
    }
    ~Desk() { window.reset(); } // before its files go

    SampleProject project;

    FindBox* findBox() { return window->findChild<FindBox*>(); }
    QDialog* list() { return window->findChild<QDialog*>("siteList"); }
    QAbstractItemView* rows() { return list()->findChild<QAbstractItemView*>(); }
    QString text(int row, int column = 0) { return rows()->model()->index(row, column).data().toString(); }
    QString message() { return window->statusBar()->currentMessage(); }
    // The name of what has the focus for screen readers, if that is a site.
    QString heard()
    {
        QAccessibleInterface* site = QAccessible::queryAccessibleInterface(frame());
        return site->state().focused ? site->text(QAccessible::Name) : QString();
    }

    QWidget* frame() { return view()->viewport()->findChild<QWidget*>("siteFrame"); }

    void openList(const QString& resource)
    {
        QApplication::setActiveWindow(window.get());
        tree()->setCurrentItem(row(resource));
        QTest::keyClick(window.get(), Qt::Key_P, Qt::ControlModifier);
    }

    // The name of the site that a resource is on; empty if none.
    QString siteOf(const QString& resource)
    {
        const auto& design = editor().engine().design();
        const auto* site = editor().engine().device().site(design.resource(design.find(resource)).site);
        return site ? site->name : QString();
    }

    QMenu* menuOf(const QString& resource)
    {
        tree()->setCurrentItem(row(resource));
        // Qt sends the position of the current row in the viewport as one in the tree.
        const QPoint position = tree()->visualItemRect(row(resource)).center();
        QContextMenuEvent event(QContextMenuEvent::Keyboard, position, tree()->mapToGlobal(position));
        QApplication::sendEvent(tree(), &event);
        return qobject_cast<QMenu*>(QApplication::activePopupWidget());
    }

    void press(QWidget* widget, Qt::Key key, int times = 1)
    {
        for (int i = 0; i < times; ++i)
            QTest::keyClick(widget, key);
    }
};

QAccessibleInterface* accessible(QObject* object)
{
    return QAccessible::queryAccessibleInterface(object);
}

// The first part of an accessible tree with a name; null if there is none.
QAccessibleInterface* named(QAccessibleInterface* top, const QString& name)
{
    if (top->text(QAccessible::Name) == name)
        return top;
    for (int i = 0; i < top->childCount(); ++i) {
        QAccessibleInterface* child = top->child(i);
        QAccessibleInterface* found = child ? named(child, name) : nullptr;
        if (found)
            return found;
    }
    return nullptr;
}

void pressNamed(QAccessibleInterface* top, const QString& name)
{
    QAccessibleInterface* part = named(top, name);
    QVERIFY2(part && part->actionInterface(), qPrintable(name));
    part->actionInterface()->doAction(QAccessibleActionInterface::pressAction());
}

// Selects the row of a cell, as a screen reader does.
void selectNamed(QAccessibleInterface* top, const QString& name)
{
    QAccessibleInterface* cell = named(top, name);
    QVERIFY2(cell && cell->tableCellInterface(), qPrintable(name));
    QAccessibleTableCellInterface* place = cell->tableCellInterface();
    QVERIFY(place->table()->tableInterface()->selectRow(place->rowIndex()));
}

} // namespace

class TestKeyboard : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase() { freshDesk(); }
    void cleanupTestCase() { m_desk.reset(); }

    void screenReaderPlacesAResource()
    {
        Desk& desk = freshDesk();
        QAccessibleInterface* window = accessible(desk.window.get());
        for (const char* name :
            {"Resources", "Drawing", "Usage", "Find resource", "Tcl command", "Console output", "pll_video"})
            QVERIFY2(named(window, name), name);
        selectNamed(named(window, "Resources"), "pll_video");
        pressNamed(window, "Place on...");
        QAccessibleInterface* list = accessible(desk.list());
        selectNamed(named(list, "Sites"), "PLL_TR1, PLL");
        pressNamed(list, "Place");
        QTRY_COMPARE(desk.siteOf(Video), "PLL_TR1");
        QCOMPARE(desk.editor().undoStack().count(), 1);
    }

    void listHasTheNearestFirstAndReasonsBelow()
    {
        Desk& desk = freshDesk();
        desk.openList(Video);
        const QSet<int> selected = ZELChipViewDatabase::getInstance()->selectedIds().ids();
        QCOMPARE(desk.text(0), "PLL_TL1"); // beside PLL_TL0, where another clock is
        QCOMPARE(ZELChipViewDatabase::getInstance()->highlightedIds().ids(), QSet<int>{FreePll});
        QVERIFY(desk.frame()->isVisible());
        desk.press(desk.rows(), Qt::Key_Down, 5);
        QVERIFY(desk.text(5, 1).contains("PLL_TL0 is occupied by gateway/clocks/pll_core"));
        QVERIFY(desk.rows()->model()->index(5, 0).data(Qt::ForegroundRole).isValid());
        QVERIFY(ZELChipViewDatabase::getInstance()->highlightedIds().isEmpty());
        desk.press(desk.rows(), Qt::Key_Return); // a greyed one is not taken
        QCOMPARE(desk.siteOf(Video), QString());
        QTest::keyClicks(desk.rows(), "bl1");
        QCOMPARE(desk.rows()->model()->rowCount(), 1);
        desk.press(desk.rows(), Qt::Key_Return);
        QCOMPARE(desk.siteOf(Video), "PLL_BL1");
        QTRY_VERIFY(!desk.list());
        QVERIFY(!desk.frame()->isVisible());
        QVERIFY(ZELChipViewDatabase::getInstance()->highlightedIds().isEmpty());
        QCOMPARE(ZELChipViewDatabase::getInstance()->selectedIds().ids(), selected);
        QTRY_COMPARE(desk.tree()->currentItem(), desk.row(Video)); // although its row is a new one
    }

    // The sites of reference clocks are to the left and to the right; no sibling of xaui is placed.
    void listIsNearTheMiddleOfTheViewOtherwise()
    {
        Desk& desk = freshDesk();
        desk.run("zel_resource reset -ip gateway/pcie; zel_resource reset -ip gateway/sgmii");
        for (const char* unit : {"DCU0", "DCU3"}) {
            desk.run(QString("zel_view zoom %1").arg(desk.editor().engine().device().site(QString(unit))->id));
            desk.openList("gateway/xaui");
            QCOMPARE(desk.text(0), unit);
            desk.press(desk.rows(), Qt::Key_Escape);
            QTRY_VERIFY(!desk.list());
        }
    }

    void listGoesWithTheProject()
    {
        Desk& desk = freshDesk();
        desk.openList(Video);
        QVERIFY(desk.list());
        const SampleProject other;
        desk.run(QString("zel_project open {%1}").arg(other.path()));
        QVERIFY(!desk.list());
        freshDesk(); // before the other project's files go
    }

    void whatCannotBePlacedIsSaid_data()
    {
        const Rows<QString, QString> row;
        row("a folder", "gateway/clocks", "gateway/clocks only groups others and cannot be placed itself.");
        row("a fixed one", "gateway/clocks/pll_core", "gateway/clocks/pll_core is fixed on PLL_TL0.");
        row("nothing", "", "No resource is chosen in the tree.");
    }

    void whatCannotBePlacedIsSaid()
    {
        const auto [resource, sentence] = row<QString, QString>();
        Desk& desk = sharedDesk();
        desk.openList(resource);
        QVERIFY(!desk.list());
        QCOMPARE(desk.message(), sentence);
    }

    void menuKeyOpensTheMenuOfTheRow_data()
    {
        const Rows<QString, QStringList, bool> row; // resource, entries, whether it can be placed
        row("a folder", "gateway/clocks",
            {"Reset", "Delete", "Config", "", "Expand", "Collapse", "", "Place on...", "Place Automatically", "Lock",
                "Unlock"},
            false);
        row("a placed one", "gateway/clocks/pll_ddr",
            {"Reset", "", "Place on...", "Place Automatically", "Lock", "Unlock"}, true);
        row("a free one", Video, {"Place on...", "Place Automatically", "Lock", "Unlock"}, true);
    }

    void menuKeyOpensTheMenuOfTheRow()
    {
        const auto [resource, entries, isPlaceable] = row<QString, QStringList, bool>();
        Desk& desk = sharedDesk();
        QMenu* menu = desk.menuOf(resource);
        QVERIFY(menu);
        QStringList texts;
        for (const QAction* action : menu->actions())
            texts.append(action->text());
        if (texts.value(0).isEmpty())
            texts.removeFirst(); // a separator at the top is not shown
        QCOMPARE(texts, entries);
        QAction* place = menu->actions()[menu->actions().size() - 4];
        QCOMPARE(place->isEnabled(), isPlaceable);
        QCOMPARE(menu->actions()[menu->actions().size() - 2]->isEnabled(), resource != Video); // it is not placed
        QVERIFY(!menu->actions().last()->isEnabled()); // nothing is locked
        place->trigger();
        QCOMPARE(desk.list() != nullptr, isPlaceable);
        menu->close();
    }

    void arrowKeysReachEverySite()
    {
        Desk& desk = sharedDesk();
        std::vector<int> ids;
        for (const auto& site : desk.editor().engine().device().sites())
            ids.push_back(site.id);
        const std::vector<SitePlace> places = visiblePlaces(*static_cast<ZelGraphicsScene*>(desk.view()->scene()), ids);
        QVERIFY(places.size() > 500);
        QSet<int> reached;
        std::vector<const SitePlace*> pending{&places.front()};
        while (!pending.empty()) {
            const SitePlace* place = pending.back();
            pending.pop_back();
            for (Direction direction : {Direction::Left, Direction::Right, Direction::Up, Direction::Down}) {
                const SitePlace* next = nextPlace(places, place->area.center(), direction);
                if (!next || reached.contains(next->id))
                    continue;
                reached.insert(next->id);
                pending.push_back(next);
            }
        }
        QCOMPARE(static_cast<std::size_t>(reached.size()), places.size());
    }

    void cursorIsSeenAndHeard()
    {
        Desk& desk = sharedDesk();
        desk.run("zel_view select 5001001"); // the cursor starts where something is selected
        desk.view()->setFocus(Qt::TabFocusReason);
        QCOMPARE(desk.heard(), "PLL_TL0, PLL, occupied by gateway/clocks/pll_core, which is fixed");
        QCOMPARE(desk.label("element"), desk.heard());
        desk.press(desk.view(), Qt::Key_Down);
        QCOMPARE(desk.heard(), "PLL_TL1, PLL, free");
        const QPoint before = desk.frame()->pos();
        // With scroll bars the arrow keys scroll, and the frame stays on its site.
        desk.run("zel_view in; zel_view in; zel_view in");
        desk.view()->horizontalScrollBar()->setValue(desk.view()->horizontalScrollBar()->minimum());
        desk.press(desk.view(), Qt::Key_Right);
        QCOMPARE(desk.heard(), "PLL_TL1, PLL, free");
        QVERIFY(desk.view()->horizontalScrollBar()->value() > desk.view()->horizontalScrollBar()->minimum());
        QTest::keyClick(desk.view(), Qt::Key_Up, Qt::ControlModifier);
        QVERIFY(desk.heard().startsWith("PLL_TL0, "));
        desk.run("zel_view fit");
        QTest::keyClick(desk.view(), Qt::Key_Down, Qt::ControlModifier);
        QTRY_COMPARE(desk.frame()->pos(), before);
        desk.tree()->setFocus();
        QVERIFY(!desk.frame()->isVisible());
    }

    // It is not painted while nothing happens, and the view still paints by itself, not item by item.
    void cursorCostsNothing()
    {
        Desk& desk = sharedDesk();
        desk.view()->setFocus();
        desk.press(desk.view(), Qt::Key_Down, 2);
        QVERIFY(desk.frame()->isVisible());
        struct Counter : QObject
        {
            bool eventFilter(QObject*, QEvent* event) override
            {
                paints += event->type() == QEvent::Paint ? 1 : 0;
                return false;
            }
            int paints = 0;
        } counter;
        QTest::qWait(50); // the paints of the last key
        desk.view()->viewport()->installEventFilter(&counter);
        QTest::qWait(300);
        QCOMPARE(counter.paints, 0);
    }

    // Return and Space open the dialog of every site that has one, also where a part lies upon its middle.
    void returnOpensTheSettings()
    {
        Desk& desk = sharedDesk();
        desk.view()->setFocus();
        int opened = 0;
        QTimer closing;
        connect(&closing, &QTimer::timeout, &closing, [&] {
            if (auto* dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget())) {
                ++opened;
                dialog->reject();
            }
        });
        closing.start(0);
        const auto comeTo = [&](int site) {
            desk.run(QString("zel_view select %1").arg(site));
            QApplication::setActiveWindow(desk.window.get());
            desk.tree()->setFocus(); // the cursor starts anew
            desk.view()->setFocus();
            desk.press(desk.view(), Qt::Key_Return);
        };
        int expected = 0;
        for (const auto& site : desk.editor().engine().device().sites()) {
            const std::string id = std::to_string(site.id);
            if (!desk.session->engine()->hasDynamicDialog(&id))
                continue;
            comeTo(site.id);
            desk.press(desk.view(), expected % 2 ? Qt::Key_Space : Qt::Key_Return);
            QCOMPARE(opened, ++expected);
        }
        QVERIFY(expected > 1);
        comeTo(FreePll);
        desk.press(desk.view(), Qt::Key_Return);
        QCOMPARE(desk.message(), "PLL_TL1 has no settings.");
    }

    void tabGoesWhereTheEyeGoes()
    {
        Desk& desk = sharedDesk();
        auto* input = desk.console()->findChild<QPlainTextEdit*>("consoleInput");
        const QList<QWidget*> order{desk.findBox(), desk.tree(), desk.chipView()->findChild<QTableWidget*>(),
            desk.view(), desk.console()->findChild<QPlainTextEdit*>("consoleOutput"), input};
        desk.findBox()->setFocus();
        for (int i = 1; i <= order.size(); ++i) {
            desk.press(desk.window->focusWidget(), Qt::Key_Tab);
            QCOMPARE(desk.window->focusWidget(), order[i % order.size()]);
        }
        for (int i = order.size(); i > 0; --i) {
            desk.press(desk.window->focusWidget(), Qt::Key_Backtab);
            QCOMPARE(desk.window->focusWidget(), order[i - 1]);
        }
        input->setFocus();
        QTest::keyClicks(input, "zel_un"); // Tab now completes
        desk.press(input, Qt::Key_Tab);
        QCOMPARE(desk.window->focusWidget(), input);
    }

    void findLooksAtKindsAndSites_data()
    {
        const Rows<QString, QString, QString> row; // the text, the row that Return selects, what is said
        row("a kind as files have it", "uvccio", "gateway/supplies/vccio_ddr", "");
        row("a kind as people have it", "reference", "gateway/clocks/refclk_eth", "");
        row("not the middle of a kind", "channel", "gateway/cpri/lane0", "gateway/cpri/lane0 is not placed.");
        row("a site", "pll_tr0", "gateway/clocks/pll_ddr", "");
        row("one that is not placed", "video", "gateway/clocks/pll_video", "gateway/clocks/pll_video is not placed.");
        row("nothing", "nowhere", "", "No resource has “nowhere” in its name, kind or site.");
    }

    void findLooksAtKindsAndSites()
    {
        const auto [text, resource, sentence] = row<QString, QString, QString>();
        Desk& desk = sharedDesk();
        QTest::keyClicks(desk.findBox(), text);
        auto* nothing = desk.tree()->findChild<QLabel*>("nothingFound");
        QCOMPARE(nothing->isVisible(), resource.isEmpty());
        if (nothing->isVisible())
            QCOMPARE(nothing->text(), sentence);
        desk.press(desk.findBox(), Qt::Key_Return);
        QCOMPARE(desk.message(), sentence);
        QCOMPARE(desk.tree()->currentItem(), resource.isEmpty() ? nullptr : desk.row(resource));
        desk.press(desk.findBox(), Qt::Key_Escape);
        QVERIFY(!nothing->isVisible());
    }

private:
    // There can be only one.
    Desk& freshDesk()
    {
        m_desk.reset();
        m_desk = std::make_unique<Desk>();
        return *m_desk;
    }

    Desk& sharedDesk()
    {
        if (m_desk->list())
            m_desk->list()->close();
        QApplication::setActiveWindow(m_desk->window.get());
        m_desk->tree()->setFocus();
        m_desk->tree()->setCurrentItem(nullptr);
        m_desk->run("zel_view select; zel_view fit");
        return *m_desk;
    }

    std::unique_ptr<Desk> m_desk; // tests that change no design share it
};

ZEL_TEST_MAIN(TestKeyboard)
#include "tst_keyboard.moc"
