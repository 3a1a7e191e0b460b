// SPDX-License-Identifier: MIT
#include "platform/contract/zeltrace.h"
#include "resources/zelrestable.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/testmain.h"

#include <QHeaderView>

using namespace zeltest;

namespace {

QTreeWidgetItem* rowNamed(const QString& resourceName)
{
    for (QTreeWidgetItemIterator row(ChipView::database()->getTree(nullptr)); *row; ++row) {
        if ((*row)->data(0, RESOURCENAME).toString() == resourceName)
            return *row;
    }
    return nullptr;
}

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

QImage imageOf(const QTreeWidgetItem* row)
{
    return imageOf(row->icon(0));
}

} // namespace

class TestResourceTree : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void cellsBecomeRows();
    void columnsShowTheFirstText();
    void iconsFollowTheType_data();
    void iconsFollowTheType();
    void idsAreKeptByName_data();
    void idsAreKeptByName();
    void poorCellsAreTolerated();
    void headIsAskedForOnce();
    void headMayComeLater();
    void rebuildTracesAndReplaces();
    void refreshKeepsWhatIsExpanded();
    void expandOpensTheBranchCollapseTheRow();
    void rowsSortNaturally();
    void rowsMayBeRebuiltBehindTheTree();
    void rowsOfAHostGoWithTheirs();
    void deepAndWideTreesWork();
    void usageRowsReplaceEachOther();
};

void TestResourceTree::cellsBecomeRows()
{
    ChipView chip;
    zeltreeviewcell* ip = chip.engine.addCell(nullptr, "ip1");
    zeltreeviewcell* channel = chip.engine.addCell(ip, "ch0", "DCUCHANNEL");
    channel->draggable = false;
    channel->resettable = true;
    chip.engine.summaries = {{"top/ip1", "3 of 4"}, {"top/ip1/ch0", "placed"}};
    chip.open();
    const QTreeWidgetItem* row = rowNamed(QStringLiteral("top/ip1"));
    QCOMPARE(row->text(0), QStringLiteral("ip1 (3 of 4)"));
    QCOMPARE(row->toolTip(0), QStringLiteral("3 of 4"));
    QCOMPARE(row->data(0, DRAGABLE), QVariant(true));
    QCOMPARE(row->data(0, RESET), QVariant(false));
    const QTreeWidgetItem* child = rowNamed(QStringLiteral("top/ip1/ch0"));
    QCOMPARE(child->text(0), QStringLiteral("ch0"));
    QCOMPARE(child->toolTip(0), QStringLiteral("placed"));
    QCOMPARE(child->data(0, DRAGABLE), QVariant(false));
    QCOMPARE(child->data(0, RESET), QVariant(true));
}

void TestResourceTree::columnsShowTheFirstText()
{
    ChipView chip;
    const std::string a = "A";
    const std::string b = "B";
    const std::map<int, const std::string*> columns{{1, &a}, {2, &b}};
    chip.engine.headerTexts = {{5, "Name"}, {7, "Kind"}, {9, "Site"}};
    chip.engine.addCell(nullptr, "full")->columns = &columns;
    chip.engine.addCell(nullptr, "empty");
    chip.open();
    const QTreeWidgetItem* full = rowNamed(QStringLiteral("top/full"));
    QCOMPARE(full->text(1) + full->text(2), QStringLiteral("AA"));
    QVERIFY(rowNamed(QStringLiteral("top/empty"))->text(1).isEmpty());
    QCOMPARE(chip.database()->getTree(nullptr)->headerItem()->text(2), QStringLiteral("Site"));
}

void TestResourceTree::iconsFollowTheType_data()
{
    QTest::addColumn<QString>("type");
    QTest::addColumn<bool>("isSupply");
    QTest::addColumn<QString>("file");
    QTest::newRow("IP") << "IP" << false << ":/images/ip.png";
    QTest::newRow("channel") << "DCUCHANNEL" << false << ":/images/dualchannel.png";
    QTest::newRow("reference clock") << "EXTREF" << false << ":/images/extref.png";
    QTest::newRow("PLL") << "PLL" << false << ":/images/dcupll.png";
    QTest::newRow("supply") << "UVCCIO" << false << ":/images/dualchannel.png";
    QTest::newRow("the supply flag wins over the type") << "PLL" << true << ":/images/dualchannel.png";
    QTest::newRow("unknown type") << "RAM" << false << ":/images/design.png";
}

void TestResourceTree::iconsFollowTheType()
{
    QFETCH(QString, type);
    QFETCH(bool, isSupply);
    QFETCH(QString, file);
    ChipView chip;
    chip.engine.addCell(nullptr, "r", type.toStdString())->uvccio = isSupply;
    chip.open();
    QCOMPARE(imageOf(rowNamed(QStringLiteral("top/r"))), imageOf(QIcon(file)));
    QVERIFY(!imageOf(QIcon(file)).isNull());
}

void TestResourceTree::idsAreKeptByName_data()
{
    QTest::addColumn<QByteArray>("idText");
    QTest::addColumn<int>("id");
    QTest::newRow("a number") << QByteArray("12") << 12;
    QTest::newRow("no number") << QByteArray("R1C1") << 0;
    QTest::newRow("a leading plus") << QByteArray("+7") << 7;
    QTest::newRow("a leading minus") << QByteArray("-7") << -7;
    QTest::newRow("nothing but blanks") << QByteArray("  ") << 0;
}

void TestResourceTree::idsAreKeptByName()
{
    QFETCH(QByteArray, idText);
    QFETCH(int, id);
    ChipView chip;
    chip.engine.addCell(nullptr, "b", "IP", idText.toStdString());
    chip.engine.addCell(nullptr, "a", "IP", idText.toStdString()); // built later: the id is its
    chip.open();
    chip.database()->addSelctedItem(id, true);
    QCOMPARE(chip.database()->getTree(nullptr)->currentItem(), rowNamed(QStringLiteral("top/a")));
    chip.database()->getTree(nullptr)->setCurrentItem(rowNamed(QStringLiteral("top/b")));
    QCOMPARE(chip.selected(), QSet<int>{id});
}

void TestResourceTree::poorCellsAreTolerated()
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
    QVERIFY(rowNamed(QStringLiteral("/poor"))->icon(0).isNull());
    QCOMPARE(rowNamed(QStringLiteral("/hole"))->childCount(), 0);
    QVERIFY(!chip.database()->parseTree(nullptr, nullptr));
    chip.database()->getTree(nullptr)->setCurrentItem(rowNamed(QStringLiteral("/poor")));
    QVERIFY(chip.selected().isEmpty());
    const QList<QTreeWidgetItem*> items = chip.database()->getTreeItems();
    QCOMPARE(items.count(nullptr), 2); // one per null cell
    QCOMPARE(items.size(), 4);
}

void TestResourceTree::headIsAskedForOnce()
{
    ChipView chip;
    chip.open();
    chip.engine.headerTexts = {{0, "Other"}};
    chip.engine.usageHead = {"Other"};
    QCOMPARE(chip.database()->getTreeHead(), (QStringList{"Name", "Site"}));
    QCOMPARE(chip.database()->getResTableHead(), (QStringList{"Used", "Available"}));
}

// Until then the tree has rows and no columns, and asks once whenever it is filled.
void TestResourceTree::headMayComeLater()
{
    ChipView chip;
    chip.engine.headerTexts.clear();
    for (const char* name : {"ip2", "ip1"})
        chip.engine.addCell(chip.engine.addCell(nullptr, name, "IP", "7"), "ch0");
    chip.open();
    ZelTree* tree = chip.database()->getTree(nullptr);
    QCOMPARE(chip.engine.headQuestions, 1);
    chip.window->expandAllTreeItems();
    chip.database()->addSelctedItem(7, true);
    chip.window->refresh(REFRESH_TREE);
    QTest::keyClick(tree, Qt::Key_Down);
    QCoreApplication::processEvents();
    QCOMPARE(chip.engine.headQuestions, 2);
    QCOMPARE(tree->columnCount(), 0);
    QCOMPARE(tree->topLevelItemCount(), 2);
    QVERIFY(rowNamed(QStringLiteral("top/ip1/ch0")));

    chip.engine.headerTexts = {{0, "Name"}, {1, "Site"}};
    for (int round = 0; round < 2; ++round)
        chip.window->refresh(REFRESH_TREE);
    QCOMPARE(chip.engine.headQuestions, 3);
    QCOMPARE(tree->columnCount(), 2);
    QCOMPARE(tree->headerItem()->text(1), QStringLiteral("Site"));
    QCOMPARE(tree->header()->sortIndicatorSection(), 0);
    tree->sortItems(0, Qt::AscendingOrder);
    QCOMPARE(topLevelTexts(), (QStringList{"ip1", "ip2"}));
    chip.window->expandAllTreeItems();
    QVERIFY(rowNamed(QStringLiteral("top/ip1"))->isExpanded());
}

void TestResourceTree::rebuildTracesAndReplaces()
{
    ChipView chip;
    chip.engine.addCell(nullptr, "ip1");
    chip.createWindow();
    std::vector<std::string> trace;
    setDiagTraceSink(
        [&](const char* text, const char* function) { trace.push_back(std::string(function) + ": " + text); });
    chip.window->refresh(REFRESH_TREE);
    QCOMPARE(trace,
        (std::vector<std::string>{"getTreeItems: call ZEL engine API: tree()", "getTreeItems: end",
            "parseTree: The head size is 2", "parseTree: The child column size is 0"}));
    QCOMPARE(topLevelTexts(), QStringList{"ip1"});
}

void TestResourceTree::refreshKeepsWhatIsExpanded()
{
    ChipView chip;
    for (const char* name : {"ip1", "ip2"})
        chip.engine.addCell(chip.engine.addCell(nullptr, name), "ch0");
    chip.open();
    chip.selectRow(0);
    rowNamed(QStringLiteral("top/ip2"))->setExpanded(true);
    chip.database()->selectedIds().assign({42});
    chip.window->refresh(REFRESH_TREE);
    QVERIFY(rowNamed(QStringLiteral("top/ip2"))->isExpanded());
    QVERIFY(!rowNamed(QStringLiteral("top/ip1"))->isExpanded());
    QVERIFY(chip.database()->getTree(nullptr)->selectedItems().isEmpty());
    QCOMPARE(chip.selected(), QSet<int>{42}); // no row that went was taken for a click
}

void TestResourceTree::expandOpensTheBranchCollapseTheRow()
{
    ChipView chip;
    zeltreeviewcell* top = chip.engine.addCell(nullptr, "a");
    chip.engine.addCell(chip.engine.addCell(top, "b"), "c");
    chip.engine.addCell(chip.engine.addCell(top, "d"), "e");
    chip.engine.addCell(chip.engine.addCell(nullptr, "other"), "f");
    chip.open();
    ZelTree* tree = chip.database()->getTree(nullptr);
    tree->sortItems(0, Qt::AscendingOrder);
    chip.database()->expandIP(); // nothing is selected
    QVERIFY(!rowNamed(QStringLiteral("top/a"))->isExpanded());
    chip.selectRow(0);
    chip.database()->expandIP();
    QVERIFY(rowNamed(QStringLiteral("top/a"))->isExpanded() && rowNamed(QStringLiteral("top/a/b"))->isExpanded());
    chip.database()->collapseIP();
    QVERIFY(!rowNamed(QStringLiteral("top/a"))->isExpanded() && rowNamed(QStringLiteral("top/a/b"))->isExpanded());

    QStringList opened;
    connect(tree, &ZelTree::itemExpanded, this, [&opened](QTreeWidgetItem* row) { opened.append(row->text(0)); });
    rowNamed(QStringLiteral("top/a/d"))->setExpanded(false);
    chip.database()->expandIP();
    QCOMPARE(opened, (QStringList{"a", "d"})); // what was open is not opened again
    tree->collapseAll();
    opened.clear();
    chip.database()->expandIP();
    QCOMPARE(opened, (QStringList{"a", "b", "c", "d", "e"})); // each branch before the next
    QVERIFY(tree->visualItemRect(rowNamed(QStringLiteral("top/a/d/e"))).isValid());
    QVERIFY(!rowNamed(QStringLiteral("top/other"))->isExpanded());

    // What a host then adds is not opened as well: it would go on for ever.
    tree->collapseAll();
    opened.clear();
    connect(tree, &ZelTree::itemExpanded, this, [&opened](QTreeWidgetItem* row) {
        if (opened.size() < 100)
            new QTreeWidgetItem(row, {QStringLiteral("more")}); // the row's
    });
    chip.database()->expandIP();
    QCOMPARE(opened, (QStringList{"a", "b", "c", "d", "e"}));
}

void TestResourceTree::rowsSortNaturally()
{
    ChipView chip;
    for (const char* name : {"ip10", "ip2", "Ip3", "\xdcip"})
        chip.engine.addCell(nullptr, name);
    chip.open();
    ZelTree* tree = chip.database()->getTree(nullptr);
    tree->sortItems(1, Qt::AscendingOrder); // column 0 decides whatever column is sorted
    QCOMPARE(topLevelTexts(), (QStringList{"Ip3", "ip2", "ip10", QStringLiteral("\u00dcip")}));
    chip.window->refresh(REFRESH_TREE);
    QCOMPARE(topLevelTexts(), (QStringList{"Ip3", "ip2", "ip10", QStringLiteral("\u00dcip")}));
}

void TestResourceTree::rowsMayBeRebuiltBehindTheTree()
{
    ChipView chip;
    chip.engine.addCell(chip.engine.addCell(nullptr, "ip1"), "ch0");
    chip.open();
    chip.selectRow(0);
    const QList<QTreeWidgetItem*>& items = chip.database()->getTreeItems(); // the rows that the tree shows go
    QCOMPARE(items.size(), 2);
    QCOMPARE(items.last()->text(0), QStringLiteral("ip1")); // children stand before their parents
    QCOMPARE(chip.database()->getTree(nullptr)->topLevelItemCount(), 0);
    QVERIFY(chip.database()->canDrop(nullptr, 7));
    chip.window->refresh(REFRESH_TREE);
    QCOMPARE(topLevelTexts(), QStringList{"ip1"});
}

void TestResourceTree::rowsOfAHostGoWithTheirs()
{
    class HostRow final : public QTreeWidgetItem
    {
    public:
        HostRow(QTreeWidgetItem* parent, int* ended)
            : QTreeWidgetItem(parent)
            , m_ended(ended)
        { }
        ~HostRow() override { ++*m_ended; }

    private:
        int* const m_ended;
    };
    ChipView chip;
    zeltreeviewcell* cell = chip.engine.addCell(nullptr, "ip1");
    chip.engine.addCell(cell, "ch0");
    chip.open();
    int ended = 0;
    for (int round = 1; round <= 2; ++round) {
        auto* row = new HostRow(rowNamed(QStringLiteral("top/ip1/ch0")), &ended); // the tree's
        QTreeWidgetItem* parsed = chip.database()->parseTree(cell, row);
        new HostRow(parsed, &ended); // the row's
        new HostRow(parsed->child(0), &ended); // the row's
        chip.window->refresh(REFRESH_TREE);
        QCOMPARE(ended, 3 * round);
        QCOMPARE(chip.database()->getTree(nullptr)->topLevelItem(0)->childCount(), 1);
    }
    QTreeWidgetItem own; // in no tree
    chip.database()->parseTree(cell, &own);
    chip.window->refresh(REFRESH_TREE);
    QCOMPARE(own.childCount(), 1);
}

void TestResourceTree::deepAndWideTreesWork()
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
    ZelTree* tree = chip.database()->getTree(nullptr);
    QCOMPARE(tree->topLevelItemCount(), Rows + 1);
    for (int i = 0; i < Rows; ++i)
        chip.database()->addSelctedItem(i, true);
    QCOMPARE(tree->currentItem()->text(0), QStringLiteral("w2999"));
    chip.window->refresh(REFRESH_TREE);
    QCOMPARE(chip.selected().size(), Rows);

    tree->setCurrentItem(tree->findItems(QStringLiteral("n"), Qt::MatchExactly).first());
    chip.database()->expandIP();
    chip.window->refresh(REFRESH_TREE);
    QCoreApplication::processEvents();
    int open = 0;
    for (QTreeWidgetItemIterator row(tree); *row; ++row)
        open += (*row)->isExpanded() ? 1 : 0;
    QVERIFY2(open >= Levels - 1, qPrintable(QString::number(open)));
}

void TestResourceTree::usageRowsReplaceEachOther()
{
    ChipView chip;
    chip.open();
    const ZelResTable* table = chip.database()->getResTable(nullptr);
    chip.engine.usageRows = {{"IP", "1", "8", "beyond the columns"}, {}, {"PLL"}};
    chip.window->refresh(REFRESH_TABLE);
    QCOMPARE(table->rowCount(), 3);
    QCOMPARE(table->verticalHeaderItem(0)->text(), QStringLiteral("IP"));
    QCOMPARE(table->item(0, 0)->text() + table->item(0, 1)->text(), QStringLiteral("18"));
    QVERIFY(!table->verticalHeaderItem(1) && !table->item(1, 0));
    QCOMPARE(table->verticalHeaderItem(2)->text(), QStringLiteral("PLL"));
    QCOMPARE(table->horizontalHeader()->length(), table->viewport()->width()); // the last column still stretches
    QCOMPARE(table->editTriggers(), QAbstractItemView::NoEditTriggers);
    chip.engine.usageRows.clear();
    chip.window->refresh(REFRESH_TABLE);
    QCOMPARE(table->rowCount(), 0);
    QCOMPARE(table->horizontalHeaderItem(1)->text(), QStringLiteral("Available"));
}

ZEL_TEST_MAIN(TestResourceTree)
#include "tst_resourcetree.moc"
