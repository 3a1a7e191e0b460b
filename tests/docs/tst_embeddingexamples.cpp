// SPDX-License-Identifier: MIT
// The host of the examples: its main function is not this program's.
#define main hostMain
#include "embeddingexamples.h"
#undef main

#include "dialogs/zeldcusettingdlg.h"
#include "graphics/zelgraphicitemattribute.h"
#include "graphics/zelgraphicsscene.h"
#include "resources/zelrestable.h"
#include "resources/zeltree.h"
#include "tests/support/testmain.h"

#include <QAbstractItemView>
#include <QComboBox>
#include <QDialog>
#include <QTemporaryDir>

using namespace mirn::zelchipview;

namespace {

// No raw string: moc loses its way in one that has slashes.
const char Drawing[]
    = "<svg xmlns='http://www.w3.org/2000/svg' xmlns:tovanel='urn:tovanel:chip-drawing' width='200' height='100'>\n"
      "<rect tovanel:id='5' x='10' y='10' width='40' height='40' fill='#808080'/>\n"
      "<rect tovanel:id='6' x='110' y='10' width='40' height='40' fill='#808080'/>\n"
      "</svg>\n";

} // namespace

// The examples of docs/embedding.md do what the text says.
class TestEmbeddingExamples : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void hostAndEngineWorkTogether()
    {
        QTemporaryDir folder;
        TinyEngine engine(zeltest::writeFile(folder.filePath("chip.svg"), Drawing).toStdString());
        static_cast<TinyChip*>(engine.chip())->filter
            = zeltest::writeFile(folder.filePath("empty.txt"), {}).toStdString();
        QMainWindow window;
        ZelChipGUI* view = openView(&engine, QFile::encodeName(folder.path()).toStdString(), &window);
        design = &engine;
        QString command;
        connect(view, &ZelChipGUI::sigRunTclCmd, this, [&command](const QString& text) { command = text; });
        window.resize(600, 400);
        window.show();
        showWholeDrawing(view);
        addPlanningAids(engine, &window);
        ZELChipViewDatabase* database = ZELChipViewDatabase::getInstance();
        ZelTree* tree = database->getTree(nullptr);
        QCOMPARE(database->getScene(nullptr)->items().size(), 2);
        QVERIFY(database->getView(nullptr)->transform().m11() > 1);
        QCOMPARE(tree->topLevelItem(0)->text(0), "u1 (not placed)");

        tree->setCurrentItem(tree->topLevelItem(0));
        QVERIFY(database->selectedIds().isEmpty());
        QVERIFY(database->canDrop(nullptr, -1));
        QVERIFY(!database->canDrop(nullptr, 5));
        window.actions().first()->trigger(); // "Place on..."
        auto* sites = tree->findChild<QDialog*>("siteList");
        QCOMPARE(sites->findChild<QAbstractItemView*>()->model()->rowCount(), 2);
        sites->reject();
        QCOMPARE(database->drop(7), 0); // refused by the command too
        QCOMPARE(database->drop(5), 1);
        QCOMPARE(command, "zel_resource place -rsc {top/u1} -id 5");
        QCOMPARE(tree->topLevelItem(0)->text(0) + tree->topLevelItem(0)->text(1), "u1 (placed)5");
        QCOMPARE(database->getResTable(nullptr)->item(0, 0)->text(), "1");
        QCOMPARE(database->getGraphicItemAttribute(1)->toolTip, "PLL: top/u1");
        tree->setCurrentItem(tree->topLevelItem(0));
        QCOMPARE(database->selectedIds().ids(), QSet<int>{5});

        ZELDCUSettingDlg dialog(&window, 5);
        dialog.findChild<QComboBox*>("comboBoxTXPLL")->setCurrentIndex(3);
        dialog.accept();
        QCOMPARE(database->getDynamicValueList(DYNAMIC_DIALOG_DCU, 5)->value(DYNAMIC_DLG_TXPLL).first(), "X20");
        QCOMPARE(view->getDirtyFlag(), 4);

        closeView(view);
        QVERIFY(!ZELChipViewDatabase::existingInstance());
        QVERIFY(!MirnProjectManager::getProjectManager()->getProject());
    }
};

ZEL_TEST_MAIN(TestEmbeddingExamples)
#include "tst_embeddingexamples.moc"
