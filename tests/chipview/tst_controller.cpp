// SPDX-License-Identifier: MIT
#include "chipview/chipviewnavigator.h"
#include "platform/contract/svgparser.h"
#include "platform/contract/zelproject.h"
#include "resources/zelrestable.h"
#include "tests/support/chipviewfixture.h"
#include "tests/support/events.h"

#include <QAction>
#include <QDockWidget>
#include <QMenu>
#include <QScopeGuard>
#include <QSignalSpy>
#include <QTimer>
#include <QTranslator>

#include <algorithm>
#include <climits>
#include <cmath>
#include <functional>

using namespace zeltest;

namespace {

QStringList actionTexts(const QMenu* menu)
{
    QStringList texts;
    for (const QAction* action : menu->actions())
        texts.append(action->isSeparator() ? "-" : action->text());
    return texts;
}

// Something that moves the view.
using Deed = std::function<void()>;

Deed request(int how, int count)
{
    return [=] {
        ChipViewNavigator navigator(ChipView::view());
        const auto navigating = static_cast<BaseNavigator::Navigating>(how);
        navigator.updateView(nullptr, navigating, QRectF(0, 0, 10, 10)); // rectangles are not followed
        navigator.updateView(nullptr, navigating, count);
    };
}

Deed key(Qt::Key key, Qt::KeyboardModifiers modifiers = Qt::NoModifier)
{
    return [=] { QTest::keyClick(ChipView::view(), key, modifiers); };
}

Deed wheel(QPoint angleDelta, Qt::KeyboardModifiers modifiers = Qt::NoModifier, int times = 1)
{
    return [=] {
        QWidget* viewport = ChipView::view()->viewport();
        for (int i = 0; i < times; ++i)
            turnWheel(viewport, viewport->rect().center(), angleDelta, modifiers);
    };
}

} // namespace

// The controller with its window, and the navigator that moves the view.
class TestController : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void windowHasItsParts()
    {
        ChipView chip;
        chip.open();
        QCOMPARE(chip.window->centralWidget(), static_cast<QWidget*>(chip.view()));
        QCOMPARE(chip.view()->resizeAnchor(), QGraphicsView::AnchorUnderMouse);
        QVERIFY(chip.view()->renderHints().testFlag(QPainter::Antialiasing));
        QCOMPARE(chip.view()->viewportUpdateMode(), QGraphicsView::BoundingRectViewportUpdate);
        const auto docks = chip.window->findChildren<QDockWidget*>();
        QCOMPARE(docks.size(), 2);
        QCOMPARE(docks[0]->windowTitle(), "Placement");
        QCOMPARE(docks[0]->widget(), static_cast<QWidget*>(chip.tree()));
        QCOMPARE(docks[1]->windowTitle(), "Usage");
        QCOMPARE(docks[1]->widget(), static_cast<QWidget*>(chip.database()->getResTable(nullptr)));
        for (const QDockWidget* dock : docks) {
            QCOMPARE(dock->features(), QDockWidget::DockWidgetMovable | QDockWidget::DockWidgetFloatable);
            QCOMPARE(dock->allowedAreas(), Qt::LeftDockWidgetArea | Qt::RightDockWidgetArea | Qt::BottomDockWidgetArea);
            QCOMPARE(chip.window->dockWidgetArea(const_cast<QDockWidget*>(dock)), Qt::LeftDockWidgetArea);
        }
        QVERIFY(docks[0]->y() < docks[1]->y());
        QVERIFY(chip.window->initTreeView());
    }

    void docksAreFoundInEveryLanguage()
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
        QCOMPARE(chip.window->findChild<QDockWidget*>("Placement")->windowTitle(), "tnemecalP");
        QCOMPARE(chip.window->findChild<QDockWidget*>("Usage")->windowTitle(), "egasU");
    }

    void popupMenusDependOnTheFlow_data()
    {
        const Rows<QByteArray, QStringList, QStringList> row;
        const QStringList browsing{"Expand", "Collapse"};
        const QStringList all{"Reset", "Delete", "Config", "-", "Expand", "Collapse"};
        row("no flow known", "", browsing, {});
        row("planning", "Post Synthesis Planning", browsing, {});
        row("any other flow", "Implementation", all, {"Reset"});
    }

    void popupMenusDependOnTheFlow()
    {
        const auto [flow, topLevel, below] = row<QByteArray, QStringList, QStringList>();
        ChipView chip;
        zelproject::getInstance()->setFlowName(flow.toStdString());
        zeltreeviewcell* ip = chip.engine.addCell(nullptr, "ip1");
        chip.engine.addCell(ip, "fixed");
        chip.engine.addCell(ip, "placed")->resettable = true;
        chip.engine.addCell(chip.engine.addCell(ip, "with rows"), "row");
        chip.open();
        chip.tree()->sortItems(0, Qt::AscendingOrder);
        QTreeWidgetItem* row = chip.tree()->topLevelItem(0);
        QCOMPARE(actionTexts(chip.database()->getTreePopupMenu(row)), topLevel);
        QVERIFY(!chip.database()->getTreePopupMenu(row->child(0)));
        for (int child : {1, 2})
            QCOMPARE(actionTexts(chip.database()->getTreePopupMenu(row->child(child))), below);
        QVERIFY(!chip.database()->getTreePopupMenu(nullptr));
    }

    void exactlyOneModeIsChecked()
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

    void filterActionComesWithTheEngine()
    {
        ChipView chip;
        ZELChipViewDatabase* database = chip.database();
        QMap<int, QAction*>* actions = &database->actions();
        QVERIFY(!database->getAction(ACTION_FILTER));
        QCOMPARE(actions->size(), 3);
        chip.createWindow();
        QCOMPARE(chip.window->getActions(), actions);
        for (const auto& [action, text] : {std::pair(ACTION_FILTER, "filter"), std::pair(ACTION_SELECT, "select"),
                 std::pair(ACTION_ZOOM, "zoom area"), std::pair(ACTION_PAN, "pan")})
            QCOMPARE(actions->value(action)->text(), QLatin1String(text));
        QVERIFY(database->getViewFilterMenu());
        QCOMPARE(actions->value(ACTION_FILTER)->menu(), database->getViewFilterMenu());
    }

    void refreshReachesWhatTheKindNames()
    {
        constexpr int HostsOwn = 17; // which says nothing to the component
        for (const int kind :
            {int(REFRESH_TREE), int(REFRESH_GRAPHIC), int(REFRESH_TABLE), int(REFRESH_ALL), HostsOwn}) {
            ChipView chip({{7, {0, 0, 10, 10}}});
            chip.engine.addCell(nullptr, "ip1");
            chip.engine.device.addRecord(7, {{"tovanel:popup", "new"}});
            chip.engine.usageRows = {{"IP", "1", "8"}};
            chip.engine.calls.clear();
            QVERIFY(chip.window->refresh(static_cast<Enum_ChipView_Refresh_Type>(kind)));
            QCOMPARE(chip.engine.calls, std::vector<std::string>{"refresh " + std::to_string(kind)});
            const auto isMeant = [kind = kind](int part) { return kind == part || kind == REFRESH_ALL; };
            QCOMPARE(chip.tree()->topLevelItemCount() == 1, isMeant(REFRESH_TREE));
            QCOMPARE(chip.attribute(1)->toolTip == "new", isMeant(REFRESH_GRAPHIC));
            QCOMPARE(chip.database()->getResTable(nullptr)->rowCount() == 1, isMeant(REFRESH_TABLE));
        }
    }

    void commandsReachTheHostAndItsAnswerComesBack()
    {
        ChipView chip;
        chip.createWindow();
        auto second = std::make_unique<ZelChipGUI>(&chip.engine, nullptr);
        QStringList commands;
        for (ZelChipGUI* window : {chip.window.get(), second.get()}) {
            connect(window, &ZelChipGUI::sigRunTclCmd, this, [&](const QString& command, int& ret, QString&) {
                commands.append(command);
                ret = 3;
            });
        }
        QCOMPARE(chip.database()->place("my ip %2", "-5"), 3);
        const QString place("zel_resource place -rsc {my ip %2} -id -5");
        QCOMPARE(commands, (QStringList{place, place})); // of every live window
        second.reset();
        QCOMPARE(chip.database()->resetResource("top/[u1]"), 3);
        QCOMPARE(commands, (QStringList{place, place, "zel_resource reset -ip {top/[u1]}"}));
        disconnect(chip.window.get(), nullptr, this, nullptr);
        QCOMPARE(chip.database()->place("u1", "7"), 0);
    }

    void instanceIsMadeAfreshAfterItsEnd()
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

    void movesOnce_data()
    {
        const auto threeAndOneBack = [] {
            wheel({0, 30}, Qt::ControlModifier, 3)();
            wheel({0, -30}, Qt::ControlModifier)();
        };
        const Rows<Deed, int, QPoint> row; // zoom steps and, where there are none, steps of the scroll bars
        row("no request", request(0, 1), 0, {0, 0});
        row("zoom in three times", request(1, 3), 3, {});
        row("zoom out twice", request(2, 2), -2, {});
        row("zoom no times", request(1, 0), 0, {0, 0});
        row("zoom minus one times", request(2, -1), 0, {0, 0});
        row("up, by one step whatever the count", request(3, 5), 0, {0, -1});
        row("down", request(4, 1), 0, {0, 1});
        row("left", request(5, 1), 0, {-1, 0});
        row("right", request(6, 1), 0, {1, 0});
        row("left no times is a step down", request(5, 0), 0, {0, 1});
        row("an unknown kind", request(7, 1), 0, {0, 0});
        row("a number beyond all kinds", request(1000, 1), 0, {0, 0});
        row("zoom in to the limit", request(1, INT_MAX), 60, {});
        row("zoom out to the limit", request(2, INT_MAX), -3, {});
        row("up by more than an int holds", request(3, INT_MAX), 0, {0, -1});
        row("right by less than an int holds is left", request(6, INT_MIN), 0, {-1, 0});
        row("the key plus", key(Qt::Key_Plus), 1, {});
        row("plus of the key pad", key(Qt::Key_Plus, Qt::KeypadModifier), 1, {});
        row("minus", key(Qt::Key_Minus), -1, {});
        row("the key up", key(Qt::Key_Up), 0, {0, -1});
        row("the key right", key(Qt::Key_Right), 0, {1, 0});
        row("Ctrl+plus is the host's", key(Qt::Key_Plus, Qt::ControlModifier), 0, {0, 0});
        row("a letter", key(Qt::Key_A), 0, {0, 0});
        row("the wheel away scrolls up", wheel({0, 120}), 0, {0, -1});
        row("as far as a number goes scrolls up", wheel({0, INT_MAX}), 0, {0, -1});
        row("towards scrolls down", wheel({0, -120}), 0, {0, 1});
        row("sideways", wheel({120, 0}), 0, {-1, 0});
        row("Ctrl zooms in", wheel({0, 120}, Qt::ControlModifier), 1, {});
        row("Ctrl, two notches towards, zooms out twice", wheel({0, -240}, Qt::ControlModifier), -2, {});
        row("seven quarters of a notch", wheel({0, 30}, Qt::ControlModifier, 7), 1, {});
        row("three quarters, and one back", threeAndOneBack, 0, {0, 0});
        row("eight quarters", wheel({0, 30}, Qt::ControlModifier, 8), 2, {});
    }

    void movesOnce()
    {
        const auto [deed, zoomSteps, scrollSteps] = row<Deed, int, QPoint>();
        ChipView chip;
        chip.drawing.setSize(4000, 4000);
        chip.open();
        chip.view()->centerOn(2000, 2000);
        const double scale = chip.view()->transform().m11();
        const QPoint position = chip.scrolled();
        deed();
        QCOMPARE(qRound(std::log(chip.view()->transform().m11() / scale) / std::log(1.25)), zoomSteps);
        const QPoint way = chip.scrolled() - position;
        const QPoint step(
            chip.view()->horizontalScrollBar()->singleStep(), chip.view()->verticalScrollBar()->singleStep());
        if (zoomSteps == 0)
            QCOMPARE(QPoint(way.x() / step.x(), way.y() / step.y()), scrollSteps);
    }

    void zoomingWithoutEffectEnds()
    {
        ChipView chip;
        chip.drawing.parameter.scaleStep = 0; // never comes to a limit
        chip.open();
        const QTransform before = chip.view()->transform();
        request(BaseNavigator::NavigateZoomIn, INT_MAX)();
        request(BaseNavigator::NavigateZoomOut, INT_MAX)();
        QCOMPARE(chip.view()->transform(), before);
    }
};

ZEL_TEST_MAIN(TestController)
#include "tst_controller.moc"
