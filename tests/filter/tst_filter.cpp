// SPDX-License-Identifier: MIT
#include "filter/filterfile.h"
#include "tests/support/chipviewfixture.h"

#include <QAction>
#include <QCheckBox>
#include <QMenu>
#include <QScreen>
#include <QTemporaryFile>

#include <cstdio>
#include <functional>

#include <unistd.h>

using namespace zeltest;

namespace {

// Rects 5, 7 and 9, and a filter file.
class FilterView : public ChipView
{
public:
    explicit FilterView(const QByteArray& filterFile)
    {
        writeFile(QFile::decodeName(engine.device.filter.c_str()), filterFile);
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

// The output that the process writes meanwhile, below all buffers.
QByteArray writtenDuring(const std::function<void()>& deed)
{
    QTemporaryFile file;
    const int before = dup(STDOUT_FILENO);
    std::fflush(stdout);
    if (!file.open() || before < 0 || dup2(file.handle(), STDOUT_FILENO) < 0)
        qFatal("standard output cannot be redirected");
    deed();
    std::fflush(stdout);
    dup2(before, STDOUT_FILENO);
    close(before);
    file.seek(0);
    return file.readAll();
}

const QByteArray TwoKinds = "\"PLL\" 9\n\"IO\" 5\n\"IO\" 7\n";

} // namespace

class TestFilter : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void menuListsTheKinds()
    {
        FilterView chip("\"PLL\" 9\r\nnoise\r\n\"R&D\" 1\r\n\"IO\" 5");
        QCOMPARE(chip.boxTexts(), (QStringList{"(Select All)", "IO", "PLL", "R&&D"})); // "&&" shows as "&"
        const QMenu* menu = chip.database()->getViewFilterMenu();
        QCOMPARE(menu->actions().size(), 1);
        QCOMPARE(menu->actions().first()->text(), "Filter Graphic Items");
        QCOMPARE(chip.boxes()[0]->property("FILTERKEYVALUE").toString(), QString());
        QCOMPARE(chip.boxes()[3]->property("FILTERKEYVALUE").toString(), "R&D");
        QVERIFY(!chip.database()->isFilterEnable());
        QCOMPARE(chip.database()->getViewFilterMenu(), menu);
        QMenu* submenu = menu->actions().first()->menu();
        submenu->popup(QPoint());
        for (const QCheckBox* box : chip.boxes())
            QVERIFY(submenu->rect().marginsRemoved({4, 4, 4, 4}).contains(box->geometry())); // clear of the border
        submenu->hide();
    }

    void tickingKindsFiltersTheirElements()
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

    void clickOnSelectAllTicksEverything()
    {
        FilterView chip(TwoKinds);
        const QList<QCheckBox*> boxes = chip.boxes();
        for (const bool isPartialBefore : {false, false, true}) {
            if (isPartialBefore)
                boxes[2]->click();
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

    void filesAreRead_data()
    {
        const Rows<QByteArray, FilterKinds> row;
        const FilterKinds two{{"IO", {5, 7}}, {"PLL", {9}}};
        row("empty", "", {});
        row("nothing but line ends", "\n\r\n\n", {});
        row("kind and id", "\"IO\" 12", {{"IO", {12}}});
        row("a kind with a blank", "\"IO Pad\" 1234", {{"IO Pad", {1234}}});
        row("the last blank lies in the name", "\"IO Pad\"", {{"IO Pad", {0}}});
        row("no blank", "\"IO\"12", {});
        row("no quote", "IO 12", {});
        row("one quote", "\"IO 12", {{"IO 12", {12}}});
        row("first and last quote count", "\"a\" \"b\" 3", {{"a\" \"b", {3}}});
        row("a leading sign", "\"IO\" -3", {{"IO", {-3}}});
        row("no number", "\"IO\" many", {{"IO", {0}}});
        row("blanks behind", "\"IO\" 12 ", {{"IO", {0}}});
        row("no name", "\"\" 4", {{"", {4}}});
        row("LF", TwoKinds, two);
        row("CR LF", QByteArray(TwoKinds).replace("\n", "\r\n"), two);
        row("no line end at the last line", TwoKinds.chopped(1), two);
        row("no line ends", QByteArray(TwoKinds).replace("\n", " "), {{"PLL\" 9 \"IO\" 5 \"IO", {0}}});
        QByteArray everyByte = "\"";
        for (int i = 0; i < 256; ++i)
            everyByte.append(i == '\n' || i == '"' ? ' ' : static_cast<char>(i));
        row("any bytes", everyByte + "\" 3", {{QString::fromLatin1(everyByte.data() + 1, everyByte.size() - 1), {3}}});
        const QByteArray longName(65535 - 5, 'x');
        row("the longest line", "\"" + longName + "\" 3\n" + TwoKinds, {{longName, {3}}, {"IO", {5, 7}}, {"PLL", {9}}});
        // Read in pieces, the first with a quote and no blank, the last with one quote.
        row("a longer one", "\"" + QByteArray(200000, 'x') + "\" 1\n" + TwoKinds,
            {{" 1", {1}}, {"IO", {5, 7}}, {"PLL", {9}}});
        row("50 MB", QByteArray(50'000'000, 'x') + '\n' + TwoKinds, two);
    }

    void filesAreRead()
    {
        const auto [content, kinds] = row<QByteArray, FilterKinds>();
        QTemporaryDir folder;
        const QString path = folder.filePath("filter.txt");
        writeFile(path, content);
        QCOMPARE(readFilterFile(path.toStdString()).value_or(FilterKinds{{"not opened", {}}}), kinds);
    }

    void missingFileLeavesSelectAll()
    {
        for (const char* file : {"/nowhere/filter.txt", "/", ""}) { // none, a folder, no name
            ChipView chip;
            chip.engine.device.filter = file;
            // Builds the menu, as far as it can be.
            QCOMPARE(writtenDuring([&chip] { chip.createWindow(); }), QByteArray("filter file open failed"));
            QMenu* menu = chip.database()->getViewFilterMenu();
            QVERIFY(menu);
            QCOMPARE(chip.database()->getAction(ACTION_FILTER)->menu(), menu);
            const auto boxes = menu->findChildren<QCheckBox*>();
            QCOMPARE(boxes.size(), 1);
            boxes.first()->click();
            QVERIFY(chip.database()->isFilterEnable());
            QVERIFY(chip.database()->filteredIds().isEmpty());
        }
    }

    void menuOfManyKindsScrolls()
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
        sendMouse(lowest, QEvent::MouseMove, edge, Qt::NoButton, Qt::NoButton);
        QTRY_VERIFY(!submenu->rect().contains(boxes.first()->geometry()));
        QTest::keyClick(submenu, Qt::Key_End);
        QVERIFY(submenu->rect().contains(boxes.last()->geometry()));
        boxes.last()->click();
        QCOMPARE(chip.filtered(), QSet<int>{Kinds - 1});
        submenu->hide();
        boxes[0]->click();
        QCOMPARE(chip.filtered().size(), Kinds);
    }
};

ZEL_TEST_MAIN(TestFilter)
#include "tst_filter.moc"
