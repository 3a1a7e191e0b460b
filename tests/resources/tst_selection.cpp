// SPDX-License-Identifier: MIT
#include "tests/support/chipviewfixture.h"

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

// top: ip1 (no id) with ch0 = 7, ch1 = 8 and group (no id) with lane = 9; pll = 10 with out = 11.
class SelectionView : public ChipView
{
public:
    SelectionView()
    {
        zeltreeviewcell* ip = engine.addCell(nullptr, "ip1");
        engine.addCell(ip, "ch0", "DCUCHANNEL", "7");
        engine.addCell(ip, "ch1", "DCUCHANNEL", "8");
        engine.addCell(engine.addCell(ip, "group"), "lane", "DCUCHANNEL", "9");
        engine.addCell(engine.addCell(nullptr, "pll", "PLL", "10"), "out", "PLL", "11");
        for (int id = 7; id <= 10; ++id)
            drawing.addRect(id, (id - 7) * 40, 10, 30, 30);
        open();
    }

    static void select(const char* resourceName) { tree()->setCurrentItem(rowNamed(resourceName)); }

    static QString currentRow() { return tree()->getResourceName(tree()->currentItem()); }
};

} // namespace

class TestSelection : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void rowSelectsItsElements()
    {
        SelectionView chip;
        const std::pair<const char*, QSet<int>> rows[] = {{"top/ip1/ch0", {7}}, {"top/ip1", {7, 8}},
            {"top/ip1/group", {9}}, {"top/pll", {10}}}; // without an id: its direct children's
        for (const auto& [row, ids] : rows) {
            chip.database()->addSelctedItem(42, false);
            chip.select(row);
            QCOMPARE(chip.selected(), ids);
        }
        chip.tree()->clearSelection(); // keeps the ids
        QCOMPARE(chip.selected(), QSet<int>{10});
    }

    void clickMakesTheRowCurrent()
    {
        SelectionView chip;
        chip.select("top/ip1/ch0");
        chip.database()->addSelctedItem(8, true);
        QCOMPARE(chip.currentRow(), "top/ip1/ch1");
        QCOMPARE(chip.selected(), (QSet<int>{7, 8})); // the row's change did not run the other way
        chip.click({95, 25});
        QCOMPARE(chip.selected(), QSet<int>{9});
        QCOMPARE(chip.currentRow(), "top/ip1/group/lane");
        QCOMPARE(connectionCount(), 1);
        chip.database()->addSelctedItem(99, true); // which no row has: adds a connection
        QCOMPARE(connectionCount(), 2);
        QCOMPARE(chip.selected(), (QSet<int>{9, 99}));
        chip.database()->addSelctedItem(99, false);
        QCOMPARE(connectionCount(), 2);
        chip.database()->addSelctedItem(7, true); // all are cut, one is made
        QCOMPARE(connectionCount(), 1);
    }

    // It does not matter what became of the ids since, nor how often the tree's signal is connected.
    void rowSelectedOnceMoreCountsAnew()
    {
        SelectionView chip;
        chip.database()->addSelctedItem(99, true);
        ZelTree* tree = chip.tree();
        const QSet<int> expected{7};
        for (const auto& change : {std::function<void()>([&] { chip.database()->addSelctedItem(42, false); }),
                 std::function<void()>([&] { chip.scene()->clearSelectedItems(); }),
                 std::function<void()>([&] { chip.database()->refresh(REFRESH_TREE); }), std::function<void()>([&] {
                     chip.engine.clearCells();
                     chip.engine.addCell(chip.engine.addCell(nullptr, "ip1"), "ch0", "DCUCHANNEL", "7");
                     chip.database()->refresh(REFRESH_TREE);
                 })}) {
            chip.select("top/ip1/ch0");
            QCOMPARE(chip.selected(), expected);
            change();
            Q_EMIT tree->itemSelectionChanged();
            if (!tree->selectedItems().isEmpty())
                QCOMPARE(chip.selected(), expected);
            tree->clearSelection();
            tree->setCurrentItem(nullptr);
        }
    }

    // It does not matter who calls the handler, nor what moves the selection on while the tree tells of it.
    void noSelectionIsLost()
    {
        for (const int extraConnections : {0, 2}) {
            SelectionView chip;
            ZelTree* tree = chip.tree();
            for (int i = 0; i < extraConnections; ++i)
                chip.database()->addSelctedItem(99, true);
            const auto call = [&chip] { chip.database()->treeItemClicked(); };
            const auto emitChange = [tree] { Q_EMIT tree->itemSelectionChanged(); };
            for (const auto& announce : {std::function<void()>(call), std::function<void()>(emitChange)}) {
                chip.select("top/ip1/ch0");
                announce();
                chip.select("top/ip1/ch1");
                QCOMPARE(chip.selected(), QSet<int>{8});
                chip.database()->addSelctedItem(7, false);
                announce();
                QCOMPARE(chip.selected(), QSet<int>{8});
                tree->currentItem()->setData(0, RESOURCENAME, "top/pll");
                announce();
                QCOMPARE(chip.selected(), QSet<int>{10});
                tree->currentItem()->setData(0, RESOURCENAME, "top/ip1/ch1");
            }
            connect(tree, &ZelTree::itemSelectionChanged, this, [&chip] { chip.select("top/ip1/group"); });
            chip.select("top/ip1/ch0");
            QCOMPARE(chip.selected(), QSet<int>{9});
        }
    }

    void bandSelectsRowsAndElements()
    {
        SelectionView chip;
        chip.drag({35, 5}, {75, 45});
        QCOMPARE(chip.selected(), QSet<int>{8});
        QCOMPARE(chip.currentRow(), "top/ip1/ch1");
        chip.drag({5, 5}, {155, 45});
        QCOMPARE(chip.selected(), (QSet<int>{7, 8, 9, 10}));
        QVERIFY(chip.currentRow() != "top/ip1/ch1"); // nor left where the first band put it
    }
};

ZEL_TEST_MAIN(TestSelection)
#include "tst_selection.moc"
