// SPDX-License-Identifier: MIT
#include "filter/filterfile.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/testmain.h"

#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QScreen>
#include <QTemporaryFile>

#include <cstdio>

#include <unistd.h>

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

// What the process writes on standard output, below all buffers.
class StandardOutput
{
public:
    StandardOutput()
        : m_before(dup(STDOUT_FILENO))
    {
        std::fflush(stdout);
        if (!m_file.open() || m_before < 0 || dup2(m_file.handle(), STDOUT_FILENO) < 0)
            qFatal("standard output cannot be redirected");
    }

    ~StandardOutput() { end(); }

    // Ends the recording.
    QByteArray end()
    {
        if (m_before >= 0) {
            std::fflush(stdout);
            dup2(m_before, STDOUT_FILENO);
            close(m_before);
            m_before = -1;
        }
        m_file.seek(0);
        return m_file.readAll();
    }

private:
    QTemporaryFile m_file;
    int m_before;
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
    void filesAreRead_data();
    void filesAreRead();
    void missingFileLeavesSelectAll_data();
    void missingFileLeavesSelectAll();
    void menuOfManyKindsScrolls();
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

void TestFilter::filesAreRead_data()
{
    QTest::addColumn<QByteArray>("content");
    QTest::addColumn<FilterKinds>("kinds");
    const FilterKinds two{{"IO", {5, 7}}, {"PLL", {9}}};
    QTest::newRow("empty") << QByteArray() << FilterKinds();
    QTest::newRow("nothing but line ends") << QByteArray("\n\r\n\n") << FilterKinds();
    QTest::newRow("LF") << TwoKinds << two;
    QTest::newRow("CR LF") << QByteArray(TwoKinds).replace("\n", "\r\n") << two;
    QTest::newRow("no line end at the last line") << TwoKinds.chopped(1) << two;
    QTest::newRow("no line ends") << QByteArray(TwoKinds).replace("\n", " ")
                                  << FilterKinds{{"PLL\" 9 \"IO\" 5 \"IO", {0}}};
    QByteArray everyByte = "\"";
    for (int i = 0; i < 256; ++i)
        everyByte.append(i == '\n' || i == '"' ? ' ' : static_cast<char>(i));
    QTest::newRow("any bytes in a name") << everyByte
            + "\" 3" << FilterKinds{{QString::fromLatin1(everyByte.data() + 1, everyByte.size() - 1), {3}}};
    const QByteArray longName(65535 - 5, 'x');
    QTest::newRow("the longest line") << "\"" + longName + "\" 3\n" + TwoKinds
                                      << FilterKinds{{longName, {3}}, {"IO", {5, 7}}, {"PLL", {9}}};
    // Read in pieces, the first with a quote and no blank, the last with one quote.
    QTest::newRow("a longer one") << "\"" + QByteArray(200000, 'x') + "\" 1\n" + TwoKinds
                                  << FilterKinds{{" 1", {1}}, {"IO", {5, 7}}, {"PLL", {9}}};
    QTest::newRow("50 MB") << QByteArray(50'000'000, 'x') + '\n' + TwoKinds << two;
}

void TestFilter::filesAreRead()
{
    QFETCH(QByteArray, content);
    ChipView chip;
    QFile file(QFile::decodeName(chip.engine.device.filter.c_str()));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(content) == content.size());
    file.close();
    QTEST(readFilterFile(chip.engine.device.filter).value_or(FilterKinds{{"not opened", {}}}), "kinds");
}

void TestFilter::missingFileLeavesSelectAll_data()
{
    QTest::addColumn<QByteArray>("file");
    QTest::newRow("no such file") << QByteArray("/nowhere/filter.txt");
    QTest::newRow("a folder") << QByteArray("/");
    QTest::newRow("no name") << QByteArray();
}

void TestFilter::missingFileLeavesSelectAll()
{
    QFETCH(QByteArray, file);
    ChipView chip;
    chip.engine.device.filter = file.toStdString();
    StandardOutput output;
    chip.createWindow(); // builds the menu, as far as it can be
    QCOMPARE(output.end(), QByteArray("filter file open failed"));
    QMenu* menu = chip.database()->getViewFilterMenu();
    QVERIFY(menu);
    QCOMPARE(chip.database()->getAction(ACTION_FILTER)->menu(), menu);
    auto* all = menu->findChild<QCheckBox*>();
    QCOMPARE(menu->findChildren<QCheckBox*>().size(), 1);
    all->click();
    QVERIFY(chip.database()->isFilterEnable());
    QVERIFY(chip.database()->filteredIds().isEmpty());
}

void TestFilter::menuOfManyKindsScrolls()
{
    constexpr int Kinds = 3000;
    QByteArray content;
    for (int i = 0; i < Kinds; ++i)
        content.append("\"kind " + QByteArray::number(100000 + i) + "\" " + QByteArray::number(i) + "\n");
    FilterView chip(content);
    const QList<QCheckBox*> boxes = chip.boxes();
    QCOMPARE(boxes.size(), Kinds + 1);
    QMenu* submenu = chip.database()->getViewFilterMenu()->actions().first()->menu();
    submenu->popup(QPoint());
    QVERIFY(submenu->height() <= submenu->screen()->geometry().height());
    QVERIFY(submenu->width() < 200); // one column
    QVERIFY(submenu->rect().contains(boxes.first()->geometry()));
    QVERIFY(!submenu->rect().contains(boxes.last()->geometry()));
    QWidget* lowest = submenu->childAt(20, submenu->height() - 3);
    const QPoint edge = lowest->mapFrom(submenu, QPoint(20, submenu->height() - 3));
    QMouseEvent move(QEvent::MouseMove, edge, lowest->mapToGlobal(edge), Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QApplication::sendEvent(lowest, &move);
    QTRY_VERIFY(!submenu->rect().contains(boxes.first()->geometry()));
    QTest::keyClick(submenu, Qt::Key_End);
    QVERIFY(submenu->rect().contains(boxes.last()->geometry()));
    boxes.last()->click();
    QCOMPARE(chip.filtered(), QSet<int>{Kinds - 1});
    submenu->hide();
    boxes[0]->click();
    QCOMPARE(chip.filtered().size(), Kinds);
}

ZEL_TEST_MAIN(TestFilter)
#include "tst_filter.moc"
