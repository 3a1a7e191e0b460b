// SPDX-License-Identifier: MIT
#include "filter/filterfile.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/testmain.h"

#include <QAction>
#include <QCheckBox>
#include <QMenu>

using namespace zeltest;

namespace {

// Rects 5, 7 and 9, and a filter file.
class FilterView : public ChipView
{
public:
    explicit FilterView(const QByteArray& filterFile)
    {
        QFile file(QFile::decodeName(engine.device.filter.c_str()));
        if (!file.open(QIODevice::WriteOnly) || file.write(filterFile) != filterFile.size())
            qFatal("cannot write the filter file");
        file.close();
        for (int id : {5, 7, 9})
            drawing.addRect(id, (id - 5) * 20, 10, 30, 30);
        open();
    }

    static QList<QCheckBox*> boxes() { return database()->getViewFilterMenu()->findChildren<QCheckBox*>(); }

    static QStringList boxTexts()
    {
        QStringList texts;
        for (const QCheckBox* box : boxes())
            texts.append(box->text());
        return texts;
    }

    static QSet<int> filtered() { return database()->filteredIds().ids(); }
};

const QByteArray TwoKinds = "\"PLL\" 9\n\"IO\" 5\n\"IO\" 7\n";

} // namespace

class TestFilter : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void linesAreRead_data();
    void linesAreRead();
    void menuListsTheKinds();
    void tickingKindsFiltersTheirElements();
    void clickOnSelectAllTicksEverything_data();
    void clickOnSelectAllTicksEverything();
    void filteredElementsShow();
    void missingFileLeavesSelectAll();
    void hugeFileIsReadInPieces();
};

void TestFilter::linesAreRead_data()
{
    QTest::addColumn<QByteArray>("line");
    QTest::addColumn<FilterKinds>("kinds");
    QTest::newRow("kind and id") << QByteArray("\"IO\" 12") << FilterKinds{{"IO", {12}}};
    QTest::newRow("a kind with a blank") << QByteArray("\"IO Pad\" 1234") << FilterKinds{{"IO Pad", {1234}}};
    QTest::newRow("the last blank lies in the name") << QByteArray("\"IO Pad\"") << FilterKinds{{"IO Pad", {0}}};
    QTest::newRow("no blank") << QByteArray("\"IO\"12") << FilterKinds();
    QTest::newRow("no quote") << QByteArray("IO 12") << FilterKinds();
    QTest::newRow("one quote") << QByteArray("\"IO 12") << FilterKinds{{"IO 12", {12}}};
    QTest::newRow("first and last quote count") << QByteArray("\"a\" \"b\" 3") << FilterKinds{{"a\" \"b", {3}}};
    QTest::newRow("a leading sign") << QByteArray("\"IO\" -3") << FilterKinds{{"IO", {-3}}};
    QTest::newRow("no number") << QByteArray("\"IO\" many") << FilterKinds{{"IO", {0}}};
    QTest::newRow("blanks behind") << QByteArray("\"IO\" 12 ") << FilterKinds{{"IO", {0}}};
    QTest::newRow("no name") << QByteArray("\"\" 4") << FilterKinds{{"", {4}}};
    QTest::newRow("bytes beyond ASCII") << QByteArray("\"\xb5\" 4") << FilterKinds{{QStringLiteral("\u00b5"), {4}}};
    QTest::newRow("empty") << QByteArray() << FilterKinds();
}

void TestFilter::linesAreRead()
{
    QFETCH(QByteArray, line);
    FilterKinds kinds;
    addFilterLine(line, kinds);
    QTEST(kinds, "kinds");
}

void TestFilter::menuListsTheKinds()
{
    FilterView chip("\"PLL\" 9\r\nnoise\r\n\"R&D\" 1\r\n\"IO\" 5");
    QCOMPARE(chip.boxTexts(), (QStringList{"(Select All)", "IO", "PLL", "R&&D"})); // "&&" shows as "&"
    const QMenu* menu = chip.database()->getViewFilterMenu();
    QCOMPARE(menu->actions().size(), 1);
    QCOMPARE(menu->actions().first()->text(), QStringLiteral("Filter Graphic Items"));
    QCOMPARE(chip.boxes()[0]->property("FILTERKEYVALUE").toString(), QString());
    QCOMPARE(chip.boxes()[3]->property("FILTERKEYVALUE").toString(), QStringLiteral("R&D"));
    QVERIFY(!chip.database()->isFilterEnable());
    QCOMPARE(chip.database()->getViewFilterMenu(), menu);
    QMenu* submenu = menu->actions().first()->menu();
    submenu->popup(QPoint());
    for (const QCheckBox* box : chip.boxes())
        QVERIFY(submenu->rect().marginsRemoved({4, 4, 4, 4}).contains(box->geometry())); // clear of the border
    submenu->hide();
}

void TestFilter::tickingKindsFiltersTheirElements()
{
    FilterView chip(TwoKinds);
    const QList<QCheckBox*> boxes = chip.boxes();
    boxes[1]->click();
    QCOMPARE(chip.filtered(), (QSet<int>{5, 7}));
    QCOMPARE(boxes[0]->checkState(), Qt::PartiallyChecked);
    QVERIFY(chip.database()->isFilterEnable());
    boxes[2]->click();
    QCOMPARE(chip.filtered(), (QSet<int>{5, 7, 9}));
    QCOMPARE(boxes[0]->checkState(), Qt::Checked);
    boxes[1]->click();
    boxes[2]->click();
    QVERIFY(chip.filtered().isEmpty());
    QCOMPARE(boxes[0]->checkState(), Qt::Unchecked);
    QVERIFY(!chip.database()->isFilterEnable());
}

void TestFilter::clickOnSelectAllTicksEverything_data()
{
    QTest::addColumn<bool>("isPartialBefore");
    QTest::newRow("from nothing") << false;
    QTest::newRow("from a partial state") << true;
}

void TestFilter::clickOnSelectAllTicksEverything()
{
    QFETCH(bool, isPartialBefore);
    FilterView chip(TwoKinds);
    const QList<QCheckBox*> boxes = chip.boxes();
    if (isPartialBefore)
        boxes[2]->click();
    for (int round = 0; round < 2; ++round) {
        boxes[0]->click();
        QCOMPARE(boxes[0]->checkState(), Qt::Checked);
        QVERIFY(boxes[1]->isChecked() && boxes[2]->isChecked());
        QCOMPARE(chip.filtered(), (QSet<int>{5, 7, 9}));
        boxes[0]->click();
        QCOMPARE(boxes[0]->checkState(), Qt::Unchecked);
        QVERIFY(!boxes[1]->isChecked() && !boxes[2]->isChecked());
        QVERIFY(chip.filtered().isEmpty());
    }
}

void TestFilter::filteredElementsShow()
{
    FilterView chip(TwoKinds);
    chip.boxes()[1]->click();
    QCoreApplication::processEvents();
    QCOMPARE(chip.colorAt({15, 25}), FILTER_FILL_COLOR);
    QCOMPARE(chip.colorAt({95, 25}).rgb(), 0xff808080u);
    chip.boxes()[1]->click();
    QCOMPARE(chip.colorAt({15, 25}).rgb(), 0xff808080u);
}

void TestFilter::missingFileLeavesSelectAll()
{
    ChipView chip;
    chip.engine.device.filter = "/nowhere/filter.txt";
    chip.database()->setChipEngine(&chip.engine); // builds the menu, as far as it can be
    chip.createWindow();
    QMenu* menu = chip.database()->getViewFilterMenu();
    QVERIFY(menu);
    QCOMPARE(chip.database()->getAction(ACTION_FILTER)->menu(), menu);
    auto* all = menu->findChild<QCheckBox*>();
    QCOMPARE(menu->findChildren<QCheckBox*>().size(), 1);
    all->click();
    QVERIFY(chip.database()->isFilterEnable());
    QVERIFY(chip.database()->filteredIds().isEmpty());
}

void TestFilter::hugeFileIsReadInPieces()
{
    // A line longer than the reader's buffer, binary noise, and a file without a single line end.
    QByteArray content = "\"" + QByteArray(200000, 'x') + "\" 1\n";
    for (int i = 0; i < 256; ++i)
        content.append(static_cast<char>(i));
    for (int i = 0; i < 200000; ++i)
        content.append("\n\"IO\" " + QByteArray::number(i));
    FilterView chip(content);
    chip.boxes()[0]->click();
    QVERIFY(chip.filtered().contains(199999));
}

ZEL_TEST_MAIN(TestFilter)
#include "tst_filter.moc"
