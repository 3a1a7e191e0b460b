// SPDX-License-Identifier: MIT
#include "resources/zelrestable.h"
#include "tests/support/chipviewfixture.h"

#include <QDataStream>
#include <QHeaderView>
#include <QSignalSpy>

#include <memory>

using namespace zeltest;

namespace {

QStringList topLevelTexts()
{
    QStringList texts;
    const ZelTree* tree = ChipView::database()->getTree(nullptr);
    for (int row = 0; row < tree->topLevelItemCount(); ++row)
        texts.append(tree->topLevelItem(row)->text(0));
    return texts;
}

// The icon's picture, to tell icons apart.
QImage imageOf(const QIcon& icon)
{
    return icon.pixmap(16, 16).toImage();
}

} // namespace

class TestResourceTree : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void cellsBecomeRows()
    {
        ChipView chip;
        zeltreeviewcell* ip = chip.engine.addCell(nullptr, "ip1");
        zeltreeviewcell* channel = chip.engine.addCell(ip, "ch0", "DCUCHANNEL");
        channel->draggable = false;
        channel->resettable = true;
        chip.engine.summaries = {{"top/ip1", "3 of 4"}, {"top/ip1/ch0", "placed"}};
        chip.open();
        const auto described = [](const QTreeWidgetItem* row) {
            return QString("%1|%2|%3|%4")
                .arg(row->text(0), row->toolTip(0), row->data(0, DRAGABLE).toString(), row->data(0, RESET).toString());
        };
        QCOMPARE(described(chip.rowNamed("top/ip1")), "ip1 (3 of 4)|3 of 4|true|false");
        QCOMPARE(described(chip.rowNamed("top/ip1/ch0")), "ch0|placed|false|true");

        // Copies have all values, and so has a row of which a host has changed one.
        QTreeWidgetItem streamed;
        QByteArray bytes;
        QDataStream out(&bytes, QIODevice::WriteOnly);
        chip.rowNamed("top/ip1/ch0")->write(out);
        QDataStream in(bytes);
        streamed.read(in);
        QCOMPARE(described(&streamed), "ch0|placed|false|true");
        const std::unique_ptr<QTreeWidgetItem> copy(chip.rowNamed("top/ip1")->clone());
        QCOMPARE(described(copy.get()), "ip1 (3 of 4)|3 of 4|true|false");
        QCOMPARE(described(copy->child(0)), "ch0|placed|false|true");
        QSignalSpy changes(chip.tree(), &ZelTree::itemChanged);
        chip.rowNamed("top/ip1")->setToolTip(0, "of a host");
        QCOMPARE(described(chip.rowNamed("top/ip1")), "ip1 (3 of 4)|of a host|true|false");
        QCOMPARE(changes.size(), 1);
    }

    void columnsShowTheFirstText()
    {
        ChipView chip;
        const std::string texts[] = {"A", "B"};
        const std::map<int, const std::string*> columns{{1, &texts[0]}, {2, &texts[1]}};
        chip.engine.headerTexts = {{5, "Name"}, {7, "Kind"}, {9, "Site"}};
        chip.engine.addCell(nullptr, "full")->columns = &columns;
        chip.engine.addCell(nullptr, "empty");
        chip.open();
        const QTreeWidgetItem* full = chip.rowNamed("top/full");
        QCOMPARE(full->text(1) + full->text(2), "AA");
        QVERIFY(chip.rowNamed("top/empty")->text(1).isEmpty());
        QCOMPARE(chip.tree()->headerItem()->text(2), "Site");
    }

    void iconsFollowTheType()
    {
        ChipView chip;
        const std::pair<const char*, const char*> icons[] = {{"IP", ":/images/ip.png"}, {"PLL", ":/images/dcupll.png"},
            {"DCUCHANNEL", ":/images/dualchannel.png"}, {"EXTREF", ":/images/extref.png"},
            {"UVCCIO", ":/images/dualchannel.png"}, {"RAM", ":/images/design.png"}}; // the last is unknown
        for (const auto& [type, file] : icons)
            chip.engine.addCell(nullptr, type, type);
        chip.engine.addCell(nullptr, "supply", "PLL")->uvccio = true; // the flag wins over the type
        chip.open();
        for (const auto& [type, file] : icons) {
            const QImage icon = imageOf(QIcon(QLatin1String(file)));
            QVERIFY(!icon.isNull());
            QCOMPARE(imageOf(chip.rowNamed((std::string("top/") + type).c_str())->icon(0)), icon);
        }
        QCOMPARE(imageOf(chip.rowNamed("top/supply")->icon(0)), imageOf(QIcon(":/images/dualchannel.png")));
    }

    void idsAreKeptByName()
    {
        for (const auto& [text, id] : {std::pair("12", 12), std::pair("R1C1", 0), std::pair("+7", 7),
                 std::pair("-7", -7), std::pair("  ", 0)}) { // what is no number counts as none
            ChipView chip;
            chip.engine.addCell(nullptr, "b", "IP", text);
            chip.engine.addCell(nullptr, "a", "IP", text); // built later: the id is its
            chip.open();
            chip.database()->addSelctedItem(id, true);
            QCOMPARE(chip.tree()->currentItem(), chip.rowNamed("top/a"));
            chip.tree()->setCurrentItem(chip.rowNamed("top/b"));
            QCOMPARE(chip.selected(), QSet<int>{id});
        }
    }

    void poorCellsAreTolerated()
    {
        ChipView chip;
        zeltreeviewcell* poor = chip.engine.addCell(nullptr, "poor", "IP", "5");
        poor->type = nullptr;
        poor->columns = nullptr;
        poor->children = nullptr;
        const std::map<int, const std::string*> nullId{{0, nullptr}};
        poor->ids = &nullId;
        std::vector<zeltreeviewcell*> withHole{nullptr};
        chip.engine.addCell(nullptr, "hole")->children = &withHole;
        chip.engine.addHole();
        chip.engine.rootName.clear();
        chip.open();
        QVERIFY(chip.rowNamed("/poor")->icon(0).isNull());
        QCOMPARE(chip.rowNamed("/hole")->childCount(), 0);
        QVERIFY(!chip.database()->parseTree(nullptr, nullptr));
        chip.tree()->setCurrentItem(chip.rowNamed("/poor"));
        QVERIFY(chip.selected().isEmpty());
        const QList<QTreeWidgetItem*> items = chip.database()->getTreeItems();
        QCOMPARE(items.count(nullptr), 2); // one per null cell
        QCOMPARE(items.size(), 4);
    }

    // Without a head the tree has rows and no columns, and asks for it once whenever it is filled.
    void headMayComeLater()
    {
        ChipView chip;
        chip.engine.headerTexts.clear();
        for (const char* name : {"ip2", "ip1"})
            chip.engine.addCell(chip.engine.addCell(nullptr, name, "IP", "7"), "ch0");
        chip.open();
        ZelTree* tree = chip.tree();
        QCOMPARE(chip.engine.headQuestions, 1);
        chip.window->expandAllTreeItems();
        chip.database()->addSelctedItem(7, true);
        chip.window->refresh(REFRESH_TREE);
        QTest::keyClick(tree, Qt::Key_Down);
        QCoreApplication::processEvents();
        QCOMPARE(chip.engine.headQuestions, 2);
        QCOMPARE(tree->columnCount(), 0);
        QCOMPARE(tree->topLevelItemCount(), 2);
        QVERIFY(chip.rowNamed("top/ip1/ch0"));

        chip.engine.headerTexts = {{0, "Name"}, {1, "Site"}};
        for (int round = 0; round < 2; ++round)
            chip.window->refresh(REFRESH_TREE);
        QCOMPARE(chip.engine.headQuestions, 3);
        QVERIFY(tree->columnCount() == 2 && tree->header()->sortIndicatorSection() == 0);
        QCOMPARE(tree->headerItem()->text(1), "Site");
        tree->sortItems(0, Qt::AscendingOrder);
        QCOMPARE(topLevelTexts(), (QStringList{"ip1", "ip2"}));
        chip.window->expandAllTreeItems();
        QVERIFY(chip.rowNamed("top/ip1")->isExpanded());
    }

    void refreshKeepsWhatIsExpanded()
    {
        ChipView chip;
        for (const char* name : {"ip1", "ip2"})
            chip.engine.addCell(chip.engine.addCell(nullptr, name), "ch0");
        chip.open();
        chip.selectRow(0);
        chip.rowNamed("top/ip2")->setExpanded(true);
        chip.database()->selectedIds().assign({42});
        chip.window->refresh(REFRESH_TREE);
        QVERIFY(chip.rowNamed("top/ip2")->isExpanded());
        QVERIFY(!chip.rowNamed("top/ip1")->isExpanded());
        QVERIFY(chip.tree()->selectedItems().isEmpty());
        QCOMPARE(chip.selected(), QSet<int>{42}); // no row that went was taken for a click
    }

    void expandOpensTheBranchCollapseTheRow()
    {
        ChipView chip;
        zeltreeviewcell* top = chip.engine.addCell(nullptr, "a");
        chip.engine.addCell(chip.engine.addCell(top, "b"), "c");
        chip.engine.addCell(chip.engine.addCell(top, "d"), "e");
        chip.engine.addCell(chip.engine.addCell(nullptr, "other"), "f");
        chip.open();
        ZelTree* tree = chip.tree();
        tree->sortItems(0, Qt::AscendingOrder);
        chip.database()->expandIP(); // nothing is selected
        QVERIFY(!chip.rowNamed("top/a")->isExpanded());
        chip.selectRow(0);
        chip.database()->expandIP();
        QVERIFY(chip.rowNamed("top/a")->isExpanded() && chip.rowNamed("top/a/b")->isExpanded());
        chip.database()->collapseIP();
        QVERIFY(!chip.rowNamed("top/a")->isExpanded() && chip.rowNamed("top/a/b")->isExpanded());

        QStringList opened;
        connect(tree, &ZelTree::itemExpanded, this, [&opened](QTreeWidgetItem* row) { opened.append(row->text(0)); });
        chip.rowNamed("top/a/d")->setExpanded(false);
        chip.database()->expandIP();
        QCOMPARE(opened, (QStringList{"a", "d"})); // what was open is not opened again
        tree->collapseAll();
        opened.clear();
        chip.database()->expandIP();
        QCOMPARE(opened, (QStringList{"a", "b", "c", "d", "e"})); // each branch before the next
        QVERIFY(tree->visualItemRect(chip.rowNamed("top/a/d/e")).isValid());
        QVERIFY(!chip.rowNamed("top/other")->isExpanded());

        // Rows that a host then adds are not opened as well, which would go on for ever.
        tree->collapseAll();
        opened.clear();
        connect(tree, &ZelTree::itemExpanded, this, [&opened](QTreeWidgetItem* row) {
            if (opened.size() < 100)
                new QTreeWidgetItem(row, {"more"}); // the row's
        });
        chip.database()->expandIP();
        QCOMPARE(opened, (QStringList{"a", "b", "c", "d", "e"}));
    }

    void rowsSortNaturally()
    {
        ChipView chip;
        for (const char* name : {"ip10", "ip2", "Ip3", "\xdcip"})
            chip.engine.addCell(nullptr, name);
        chip.open();
        ZelTree* tree = chip.tree();
        tree->sortItems(1, Qt::AscendingOrder); // column 0 decides whatever column is sorted
        const QStringList sorted{"Ip3", "ip2", "ip10", "\u00dcip"};
        QCOMPARE(topLevelTexts(), sorted);
        chip.window->refresh(REFRESH_TREE);
        QCOMPARE(topLevelTexts(), sorted);
    }

    void rowsMayBeRebuiltBehindTheTree()
    {
        ChipView chip;
        chip.engine.addCell(chip.engine.addCell(nullptr, "ip1"), "ch0");
        chip.open();
        chip.selectRow(0);
        const QList<QTreeWidgetItem*>& items = chip.database()->getTreeItems(); // the rows that the tree shows go
        QCOMPARE(items.size(), 2);
        QCOMPARE(items.last()->text(0), "ip1"); // children stand before their parents
        QCOMPARE(chip.tree()->topLevelItemCount(), 0);
        QVERIFY(chip.database()->canDrop(nullptr, 7));
        const std::vector<std::string>& trace = traceFromNowOn();
        chip.window->refresh(REFRESH_TREE);
        const std::string head = "parseTree: The head size is 2";
        const std::string columns = "parseTree: The child column size is 0";
        QCOMPARE(trace,
            (std::vector<std::string>{
                "getTreeItems: call ZEL engine API: tree()", "getTreeItems: end", head, columns, head, columns}));
        QCOMPARE(topLevelTexts(), QStringList{"ip1"});
    }

    void rowsOfAHostGoWithTheirs()
    {
        struct HostRow final : public QTreeWidgetItem
        {
            using QTreeWidgetItem::QTreeWidgetItem;
            std::shared_ptr<int> counted;
        };
        const auto counted = std::make_shared<int>();
        const auto addRow = [&counted](QTreeWidgetItem* parent) {
            auto* row = new HostRow(parent); // the parent's
            row->counted = counted;
            return row;
        };
        ChipView chip;
        zeltreeviewcell* cell = chip.engine.addCell(nullptr, "ip1");
        chip.engine.addCell(cell, "ch0");
        chip.open();
        for (int round = 0; round < 2; ++round) {
            QTreeWidgetItem* parsed = chip.database()->parseTree(cell, addRow(chip.rowNamed("top/ip1/ch0")));
            addRow(parsed);
            addRow(parsed->child(0));
            QCOMPARE(counted.use_count(), 4L);
            chip.window->refresh(REFRESH_TREE);
            QCOMPARE(counted.use_count(), 1L);
            QCOMPARE(chip.tree()->topLevelItem(0)->childCount(), 1);
        }
        QTreeWidgetItem own; // in no tree
        chip.database()->parseTree(cell, &own);
        chip.window->refresh(REFRESH_TREE);
        QCOMPARE(own.childCount(), 1);
    }

    void deepAndWideTreesWork()
    {
        constexpr int Levels = 5000;
        constexpr int Rows = 3000;
        ChipView chip;
        zeltreeviewcell* cell = nullptr;
        for (int level = 0; level < Levels; ++level)
            cell = chip.engine.addCell(cell, "n");
        for (int i = 0; i < Rows; ++i)
            chip.engine.addCell(nullptr, "w" + std::to_string(i), "IP", std::to_string(i));
        chip.open();
        ZelTree* tree = chip.tree();
        QCOMPARE(tree->topLevelItemCount(), Rows + 1);
        for (int i = 0; i < Rows; ++i)
            chip.database()->addSelctedItem(i, true);
        QCOMPARE(tree->currentItem()->text(0), "w2999");
        chip.window->refresh(REFRESH_TREE);
        QCOMPARE(chip.selected().size(), Rows);

        tree->setCurrentItem(tree->findItems("n", Qt::MatchExactly).first());
        chip.database()->expandIP();
        chip.window->refresh(REFRESH_TREE);
        QCoreApplication::processEvents();
        int open = 0;
        for (QTreeWidgetItemIterator row(tree); *row; ++row)
            open += (*row)->isExpanded() ? 1 : 0;
        QVERIFY2(open >= Levels - 1, qPrintable(QString::number(open)));
    }

    void usageRowsReplaceEachOther()
    {
        ChipView chip;
        chip.open();
        const ZelResTable* table = chip.database()->getResTable(nullptr);
        chip.engine.usageRows = {{"IP", "1", "8", "beyond the columns"}, {}, {"PLL", "2"}};
        chip.window->refresh(REFRESH_TABLE);
        QCOMPARE(table->rowCount(), 3);
        QCOMPARE(table->verticalHeaderItem(0)->text(), "IP");
        QCOMPARE(table->item(0, 0)->text() + table->item(0, 1)->text(), "18");
        QVERIFY(!table->verticalHeaderItem(1) && !table->item(1, 0));
        QCOMPARE(table->verticalHeaderItem(2)->text() + table->item(2, 0)->text(), "PLL2");
        QCOMPARE(table->horizontalHeader()->length(), table->viewport()->width()); // the last column still stretches
        QCOMPARE(table->editTriggers(), QAbstractItemView::NoEditTriggers);
        chip.engine.usageRows.clear();
        chip.engine.usageHead = {"Asked", "only once"};
        chip.window->refresh(REFRESH_TABLE);
        QCOMPARE(table->rowCount(), 0);
        QCOMPARE(table->horizontalHeaderItem(1)->text(), "Available");
    }
};

ZEL_TEST_MAIN(TestResourceTree)
#include "tst_resourcetree.moc"
