// SPDX-License-Identifier: MIT
#include "tests/support/chipviewfixture.h"
#include "tests/support/testmain.h"

#include <functional>

using namespace zeltest;

namespace {

// How often a selection change of the tree reaches the controller.
int connectionCount()
{
    class Access : public ZelTree
    {
    public:
        using QObject::receivers;
    };
    const auto* tree = ChipView::database()->getTree(nullptr);
    return (tree->*(&Access::receivers))(SIGNAL(itemSelectionChanged()));
}

// top: ip1 (no id) with ch0 = 7, ch1 = 8 and group (no id) with lane = 9; pll = 10.
class SelectionView : public ChipView
{
public:
    SelectionView()
    {
        zeltreeviewcell* ip = engine.addCell(nullptr, "ip1");
        engine.addCell(ip, "ch0", "DCUCHANNEL", "7");
        engine.addCell(ip, "ch1", "DCUCHANNEL", "8");
        engine.addCell(engine.addCell(ip, "group"), "lane", "DCUCHANNEL", "9");
        engine.addCell(nullptr, "pll", "PLL", "10");
        for (int id = 7; id <= 10; ++id)
            drawing.addRect(id, (id - 7) * 40, 10, 30, 30);
        open();
    }

    static void select(const QString& resourceName)
    {
        for (QTreeWidgetItemIterator row(database()->getTree(nullptr)); *row; ++row) {
            if ((*row)->data(0, RESOURCENAME).toString() == resourceName)
                database()->getTree(nullptr)->setCurrentItem(*row);
        }
    }

    static QString currentRow()
    {
        ZelTree* tree = database()->getTree(nullptr);
        return tree->getResourceName(tree->currentItem());
    }
};

} // namespace

class TestSelection : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void rowSelectsItsElements_data();
    void rowSelectsItsElements();
    void rowSelectionShowsAtOnce();
    void clickMakesTheRowCurrent();
    void clearedTreeSelectionKeepsTheIds();
    void rowSelectedOnceMoreCountsAnew();
    void noSelectionIsLost_data();
    void noSelectionIsLost();
    void unknownIdsAddAConnection();
    void bandSelectsRowsAndElements();
};

void TestSelection::rowSelectsItsElements_data()
{
    QTest::addColumn<QString>("row");
    QTest::addColumn<QSet<int>>("ids");
    QTest::newRow("a leaf with an id") << "top/ip1/ch0" << QSet<int>{7};
    QTest::newRow("a parent without: its direct children's") << "top/ip1" << QSet<int>{7, 8};
    QTest::newRow("one level further down") << "top/ip1/group" << QSet<int>{9};
}

void TestSelection::rowSelectsItsElements()
{
    QFETCH(QString, row);
    SelectionView chip;
    chip.database()->addSelctedItem(42, false);
    chip.select(row);
    QTEST(chip.selected(), "ids");
}

void TestSelection::rowSelectionShowsAtOnce()
{
    SelectionView chip;
    chip.select(QStringLiteral("top/pll"));
    QCoreApplication::processEvents();
    QCOMPARE(chip.colorAt({135, 25}), SELECTED_FILL_COLOR);
    chip.select(QStringLiteral("top/ip1"));
    QCOMPARE(chip.colorAt({135, 25}).rgb(), 0xff808080u);
    QCOMPARE(chip.colorAt({15, 25}), SELECTED_FILL_COLOR);
}

void TestSelection::clickMakesTheRowCurrent()
{
    SelectionView chip;
    chip.select(QStringLiteral("top/ip1/ch0"));
    chip.database()->addSelctedItem(8, true);
    QCOMPARE(chip.currentRow(), QStringLiteral("top/ip1/ch1"));
    QCOMPARE(chip.selected(), (QSet<int>{7, 8})); // the row's change did not run the other way
    chip.click({95, 25});
    QCOMPARE(chip.selected(), QSet<int>{9});
    QCOMPARE(chip.currentRow(), QStringLiteral("top/ip1/group/lane"));
    QCOMPARE(connectionCount(), 1);
}

void TestSelection::clearedTreeSelectionKeepsTheIds()
{
    SelectionView chip;
    chip.select(QStringLiteral("top/pll"));
    chip.database()->getTree(nullptr)->clearSelection();
    QCOMPARE(chip.selected(), QSet<int>{10});
}

// Whatever became of the ids since, and however often the tree's signal is connected.
void TestSelection::rowSelectedOnceMoreCountsAnew()
{
    SelectionView chip;
    chip.database()->addSelctedItem(99, true);
    ZelTree* tree = chip.database()->getTree(nullptr);
    const QSet<int> expected{7};
    for (const auto& change : {std::function<void()>([&] { chip.database()->addSelctedItem(42, false); }),
             std::function<void()>([&] { chip.scene()->clearSelectedItems(); }),
             std::function<void()>([&] { chip.database()->refresh(REFRESH_TREE); }), std::function<void()>([&] {
                 chip.engine.clearCells();
                 chip.engine.addCell(chip.engine.addCell(nullptr, "ip1"), "ch0", "DCUCHANNEL", "7");
                 chip.database()->refresh(REFRESH_TREE);
             })}) {
        chip.select(QStringLiteral("top/ip1/ch0"));
        QCOMPARE(chip.selected(), expected);
        change();
        Q_EMIT tree->itemSelectionChanged();
        if (!tree->selectedItems().isEmpty())
            QCOMPARE(chip.selected(), expected);
        tree->clearSelection();
        tree->setCurrentItem(nullptr);
    }
}

// Whoever calls the handler, and whatever moves the selection on while the tree tells of it.
void TestSelection::noSelectionIsLost_data()
{
    QTest::addColumn<int>("extraConnections");
    QTest::newRow("connected once") << 0;
    QTest::newRow("connected three times") << 2;
}

void TestSelection::noSelectionIsLost()
{
    QFETCH(int, extraConnections);
    SelectionView chip;
    ZelTree* tree = chip.database()->getTree(nullptr);
    for (int i = 0; i < extraConnections; ++i)
        chip.database()->addSelctedItem(99, true);
    const auto call = [&chip] { chip.database()->treeItemClicked(); };
    const auto emitChange = [tree] { Q_EMIT tree->itemSelectionChanged(); };
    for (const auto& announce : {std::function<void()>(call), std::function<void()>(emitChange)}) {
        chip.select(QStringLiteral("top/ip1/ch0"));
        announce();
        chip.select(QStringLiteral("top/ip1/ch1"));
        QCOMPARE(chip.selected(), QSet<int>{8});
        chip.database()->addSelctedItem(7, false);
        announce();
        QCOMPARE(chip.selected(), QSet<int>{8});
        tree->currentItem()->setData(0, RESOURCENAME, QStringLiteral("top/pll"));
        announce();
        QCOMPARE(chip.selected(), QSet<int>{10});
        tree->currentItem()->setData(0, RESOURCENAME, QStringLiteral("top/ip1/ch1"));
    }
    connect(tree, &ZelTree::itemSelectionChanged, this, [&chip] { chip.select(QStringLiteral("top/ip1/group")); });
    chip.select(QStringLiteral("top/ip1/ch0"));
    QCOMPARE(chip.selected(), QSet<int>{9});
}

void TestSelection::unknownIdsAddAConnection()
{
    SelectionView chip;
    QCOMPARE(connectionCount(), 1);
    chip.database()->addSelctedItem(99, true);
    QCOMPARE(connectionCount(), 2);
    QCOMPARE(chip.selected(), QSet<int>{99});
    chip.database()->addSelctedItem(99, false);
    QCOMPARE(connectionCount(), 2);
    chip.database()->addSelctedItem(7, true); // all are cut, one is made
    QCOMPARE(connectionCount(), 1);
}

void TestSelection::bandSelectsRowsAndElements()
{
    SelectionView chip;
    chip.drag({35, 5}, {75, 45});
    QCOMPARE(chip.selected(), QSet<int>{8});
    chip.drag({5, 5}, {155, 45});
    QCOMPARE(chip.selected(), (QSet<int>{7, 8, 9, 10}));
    QVERIFY(chip.currentRow() != QStringLiteral("top/ip1/ch1")); // nor left where the first band put it
}

ZEL_TEST_MAIN(TestSelection)
#include "tst_selection.moc"
