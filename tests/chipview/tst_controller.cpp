// SPDX-License-Identifier: MIT
#include "platform/contract/svgparser.h"
#include "platform/contract/zelproject.h"
#include "resources/zelrestable.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/testmain.h"

#include <QAction>
#include <QActionGroup>
#include <QDockWidget>
#include <QMenu>
#include <QPlainTextEdit>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTimer>
#include <QTranslator>

#include <algorithm>

using namespace zeltest;

namespace {

QStringList actionTexts(const QMenu* menu)
{
    QStringList texts;
    const QList<QAction*> actions = menu->actions();
    for (const QAction* action : actions)
        texts.append(action->isSeparator() ? QStringLiteral("-") : action->text());
    return texts;
}

} // namespace

class TestController : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void windowHasItsParts();
    void docksAreFoundInEveryLanguage();
    void factoriesGiveTheSameObject();
    void popupMenusDependOnTheFlow_data();
    void popupMenusDependOnTheFlow();
    void exactlyOneModeIsChecked();
    void filterActionComesWithTheEngine();
    void refreshReachesWhatTheKindNames_data();
    void refreshReachesWhatTheKindNames();
    void dirtyAfterDynamicValuesOnly();
    void commandsReachTheHostAndItsAnswerComesBack();
    void everyLiveWindowRelaysCommands();
    void attributesAreLookedUpWithoutInserting();
    void instanceIsMadeAfreshAfterItsEnd();
};

void TestController::windowHasItsParts()
{
    ChipView chip;
    chip.open();
    QCOMPARE(chip.window->centralWidget(), static_cast<QWidget*>(chip.view()));
    QCOMPARE(chip.view()->resizeAnchor(), QGraphicsView::AnchorUnderMouse);
    QVERIFY(chip.view()->renderHints().testFlag(QPainter::Antialiasing));
    QCOMPARE(chip.view()->viewportUpdateMode(), QGraphicsView::BoundingRectViewportUpdate);
    const auto docks = chip.window->findChildren<QDockWidget*>();
    QCOMPARE(docks.size(), 2);
    QCOMPARE(docks[0]->windowTitle(), QStringLiteral("Placement"));
    QCOMPARE(docks[0]->widget(), static_cast<QWidget*>(chip.database()->getTree(nullptr)));
    QCOMPARE(docks[1]->windowTitle(), QStringLiteral("Usage"));
    QCOMPARE(docks[1]->widget(), static_cast<QWidget*>(chip.database()->getResTable(nullptr)));
    for (const QDockWidget* dock : docks) {
        QCOMPARE(dock->features(), QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
        QCOMPARE(dock->allowedAreas(), Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea | Qt::BottomDockWidgetArea);
        QCOMPARE(chip.window->dockWidgetArea(const_cast<QDockWidget*>(dock)), Qt::LeftDockWidgetArea);
    }
    QVERIFY(docks[0]->y() < docks[1]->y());
    QVERIFY(chip.window->initTreeView());
}

void TestController::docksAreFoundInEveryLanguage()
{
    class Backwards final : public QTranslator
    {
    public:
        bool isEmpty() const override { return false; }
        QString translate(const char*, const char* text, const char*, int) const override
        {
            QString result = QString::fromLatin1(text);
            std::reverse(result.begin(), result.end());
            return result;
        }
    };
    Backwards translator;
    QCoreApplication::installTranslator(&translator);
    const auto remove = qScopeGuard([&] { QCoreApplication::removeTranslator(&translator); });
    ChipView chip;
    chip.createWindow();
    QCOMPARE(
        chip.window->findChild<QDockWidget*>(QStringLiteral("Placement"))->windowTitle(), QStringLiteral("tnemecalP"));
    QCOMPARE(chip.window->findChild<QDockWidget*>(QStringLiteral("Usage"))->windowTitle(), QStringLiteral("egasU"));
}

void TestController::factoriesGiveTheSameObject()
{
    ChipView chip;
    chip.open();
    ZELChipViewDatabase* database = chip.database();
    QObject other;
    QCOMPARE(database->getScene(&other), database->getScene(nullptr));
    QCOMPARE(database->getView(nullptr)->scene(), static_cast<QGraphicsScene*>(database->getScene(nullptr)));
    QCOMPARE(database->getTree(nullptr), database->getTree(chip.window.get()));
    QCOMPARE(database->getResTable(nullptr), database->getResTable(chip.window.get()));
    QCOMPARE(database->getSVGParser(), database->getSVGParser());
    const auto* hoverText = database->getView(nullptr)->findChild<QPlainTextEdit*>();
    QCOMPARE(hoverText->size(), QSize(150, 30));
    QVERIFY(hoverText->isWindow());
    QVERIFY(!hoverText->isVisible());
}

void TestController::popupMenusDependOnTheFlow_data()
{
    QTest::addColumn<QByteArray>("flow");
    QTest::addColumn<QStringList>("topLevel");
    QTest::addColumn<QStringList>("below");
    const QStringList browsing{"Expand", "Collapse"};
    const QStringList all{"Reset", "Delete", "Config", "-", "Expand", "Collapse"};
    QTest::newRow("no flow known") << QByteArray() << browsing << QStringList();
    QTest::newRow("planning") << QByteArray("Post Synthesis Planning") << browsing << QStringList();
    QTest::newRow("any other flow") << QByteArray("Implementation") << all << QStringList{"Reset"};
}

void TestController::popupMenusDependOnTheFlow()
{
    QFETCH(QByteArray, flow);
    ChipView chip;
    zelproject::getInstance()->setFlowName(flow.toStdString());
    zeltreeviewcell* ip = chip.engine.addCell(nullptr, "ip1");
    chip.engine.addCell(ip, "fixed");
    chip.engine.addCell(ip, "placed")->resettable = true;
    chip.open();
    chip.database()->getTree(nullptr)->sortItems(0, Qt::AscendingOrder);
    QTreeWidgetItem* row = chip.database()->getTree(nullptr)->topLevelItem(0);
    QTEST(actionTexts(chip.database()->getTreePopupMenu(row)), "topLevel");
    QVERIFY(!chip.database()->getTreePopupMenu(row->child(0)));
    QTEST(actionTexts(chip.database()->getTreePopupMenu(row->child(1))), "below");
    QVERIFY(!chip.database()->getTreePopupMenu(nullptr));
}

void TestController::exactlyOneModeIsChecked()
{
    ChipView chip;
    chip.open();
    ZELChipViewDatabase* database = chip.database();
    const auto checked = [&] {
        QList<int> ids;
        for (auto action = database->actions().cbegin(); action != database->actions().cend(); ++action) {
            if (action.value()->isChecked())
                ids.append(action.key());
        }
        return ids;
    };
    QCOMPARE(database->getMouseMode(), int(ACTION_SELECT));
    for (int mode : {ACTION_PAN, ACTION_ZOOM, ACTION_SELECT, ACTION_ZOOM}) {
        database->getAction(mode)->trigger();
        QCOMPARE(database->getMouseMode(), mode);
        QCOMPARE(checked(), QList<int>{mode});
        database->getAction(ACTION_FILTER)->trigger(); // opens a menu, is no mode
        QCOMPARE(checked(), QList<int>{mode});
    }
    QVERIFY(!database->getAction(17));
    QVERIFY(!database->actions().contains(17));
    database->actions().insert(0, nullptr); // a host's
    QCOMPARE(database->getMouseMode(), int(ACTION_ZOOM));
    database->actions().remove(0);
}

void TestController::filterActionComesWithTheEngine()
{
    ChipView chip;
    ZELChipViewDatabase* database = chip.database();
    QMap<int, QAction*>* actions = &database->actions();
    QVERIFY(!database->getAction(ACTION_FILTER));
    QCOMPARE(actions->size(), 3);
    chip.createWindow();
    QCOMPARE(chip.window->getActions(), actions);
    QCOMPARE(actions->value(ACTION_FILTER)->text(), QStringLiteral("filter"));
    QCOMPARE(actions->value(ACTION_FILTER)->menu(), database->getViewFilterMenu());
    QVERIFY(database->getViewFilterMenu());
    QCOMPARE(actions->value(ACTION_SELECT)->text(), QStringLiteral("select"));
    QCOMPARE(actions->value(ACTION_ZOOM)->text(), QStringLiteral("zoom area"));
    QCOMPARE(actions->value(ACTION_PAN)->text(), QStringLiteral("pan"));
}

void TestController::refreshReachesWhatTheKindNames_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("tree");
    QTest::addColumn<bool>("graphic");
    QTest::addColumn<bool>("table");
    QTest::newRow("tree") << 0 << true << false << false;
    QTest::newRow("drawing") << 1 << false << true << false;
    QTest::newRow("table") << 2 << false << false << true;
    QTest::newRow("all") << 3 << true << true << true;
    QTest::newRow("a kind of the host's own") << 17 << false << false << false;
}

void TestController::refreshReachesWhatTheKindNames()
{
    QFETCH(int, kind);
    ChipView chip;
    chip.drawing.addRect(7, 0, 0, 10, 10);
    chip.open();
    chip.engine.addCell(nullptr, "ip1");
    chip.engine.device.addRecord(7, {{"tovanel:popup", "new"}});
    chip.engine.usageRows = {{"IP", "1", "8"}};
    chip.engine.calls.clear();
    QVERIFY(chip.window->refresh(static_cast<Enum_ChipView_Refresh_Type>(kind)));
    QCOMPARE(chip.engine.calls, std::vector<std::string>{"refresh " + std::to_string(kind)});
    QTEST(chip.database()->getTree(nullptr)->topLevelItemCount() == 1, "tree");
    QTEST(chip.database()->getGraphicItemAttribute(1)->toolTip == QStringLiteral("new"), "graphic");
    QTEST(chip.database()->getResTable(nullptr)->rowCount() == 1, "table");
}

void TestController::dirtyAfterDynamicValuesOnly()
{
    ChipView chip;
    chip.open();
    chip.database()->setDynamicValue({}, 7, DYNAMIC_DIALOG_DCU);
    QCOMPARE(chip.window->getDirtyFlag(), 0);
    chip.engine.calls.clear();
    chip.database()->setDynamicValue({{"CH0", "A"}, {"TXPLL", "B"}}, 7, DYNAMIC_DIALOG_DCU);
    QCOMPARE(chip.engine.calls, (std::vector<std::string>{"set 7 CH0=A", "set 7 TXPLL=B", "refresh 3"}));
    QCOMPARE(chip.window->getDirtyFlag(), 4);
    chip.window->clearDirtyFlag();
    QCOMPARE(chip.window->getDirtyFlag(), 0);
}

void TestController::commandsReachTheHostAndItsAnswerComesBack()
{
    ChipView chip;
    chip.open();
    QStringList commands;
    connect(chip.window.get(), &ZelChipGUI::sigRunTclCmd, this, [&](const QString& command, int& ret, QString&) {
        commands.append(command);
        ret = 3;
    });
    QCOMPARE(chip.database()->place(QStringLiteral("my ip %2"), QStringLiteral("-5")), 3);
    QCOMPARE(chip.database()->resetResource(QStringLiteral("top/[u1]")), 3);
    QCOMPARE(commands, (QStringList{"zel_resource place -rsc {my ip %2} -id -5", "zel_resource reset -ip {top/[u1]}"}));
    disconnect(chip.window.get(), nullptr, this, nullptr);
    QCOMPARE(chip.database()->place(QStringLiteral("u1"), QStringLiteral("7")), 0);
}

void TestController::everyLiveWindowRelaysCommands()
{
    ChipView chip;
    chip.createWindow();
    auto second = std::make_unique<ZelChipGUI>(&chip.engine, nullptr);
    int runs = 0;
    for (ZelChipGUI* window : {chip.window.get(), second.get()})
        connect(window, &ZelChipGUI::sigRunTclCmd, this, [&] { ++runs; });
    chip.database()->resetResource(QStringLiteral("top/u1"));
    QCOMPARE(runs, 2);
    second.reset();
    chip.database()->resetResource(QStringLiteral("top/u1"));
    QCOMPARE(runs, 3);
}

void TestController::attributesAreLookedUpWithoutInserting()
{
    ChipView chip;
    chip.drawing.addRect(7, 0, 0, 10, 10);
    chip.open();
    QVERIFY(!chip.database()->getGraphicItemAttribute(2));
    QVERIFY(!chip.database()->getGraphicItemAttribute(2));
    QCOMPARE(chip.database()->getGraphicItemAttribute(1)->itemId, 7);
}

void TestController::instanceIsMadeAfreshAfterItsEnd()
{
    QVERIFY(!ZELChipViewDatabase::existingInstance());
    ZELChipViewDatabase* first = ZELChipViewDatabase::getInstance();
    QSignalSpy ends(first, &QObject::destroyed);
    first->selectedIds().insert(1);
    ZELChipViewDatabase::destoryInstance();
    ZELChipViewDatabase::destoryInstance();
    QCOMPARE(ends.size(), 1);
    QVERIFY(!ZELChipViewDatabase::existingInstance());
    QVERIFY(ZELChipViewDatabase::getInstance()->selectedIds().isEmpty());
    QVERIFY(!ZELChipViewDatabase::getInstance()->findChild<QTimer*>()->isActive());
    ZELChipViewDatabase::destoryInstance();
}

ZEL_TEST_MAIN(TestController)
#include "tst_controller.moc"
