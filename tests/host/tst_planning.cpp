// SPDX-License-Identifier: MIT
#include "host/window/findbox.h"
#include "tests/host/hostfiles.h"
#include "tests/host/shownwindow.h"
#include "tests/support/rows.h"
#include "tests/support/testmain.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QComboBox>
#include <QDir>
#include <QDragEnterEvent>
#include <QElapsedTimer>
#include <QFile>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPlainTextEdit>
#include <QRegularExpression>
#include <QScrollBar>
#include <QStatusBar>
#include <QTimer>

#include <algorithm>

using namespace mirn::zelchip;
using namespace mirn::zelchipview;

namespace {

const QByteArray Design = R"([
  {"name": "duo", "type": "IP", "children": [
    {"name": "a", "type": "DCUCHANNEL"}, {"name": "b", "type": "DCUCHANNEL"}]},
  {"name": "core", "type": "PLL"}
])";

// The program's window on a project with something to place.
class Planning : public ShownWindow
{
public:
    Planning() { open(); }
    ~Planning() { window.reset(); } // before its files go

    void open() { show(files.project.path(), QSize(1000, 700)); }

    QString consoleText() { return console()->findChild<QPlainTextEdit*>()->toPlainText(); }
    FindBox* findBox() { return window->findChild<FindBox*>(); }

    int siteOf(const QString& resource)
    {
        const auto& design = editor().engine().design();
        return design.resource(design.find(resource)).site;
    }

    // Takes a resource from the tree over the drawing.
    void dragTo(const QString& resource, QPointF scenePosition)
    {
        tree()->setCurrentItem(row(resource));
        drag<QDragEnterEvent>(scenePosition);
        drag<QDragMoveEvent>(scenePosition);
    }

    template <typename Event> void drag(QPointF scenePosition)
    {
        const QPoint position = view()->mapFromScene(scenePosition);
        QCursor::setPos(view()->viewport()->mapToGlobal(position));
        Event event(position, Qt::CopyAction | Qt::MoveAction, &m_mimeData, Qt::LeftButton, Qt::NoModifier);
        QApplication::sendEvent(view()->viewport(), &event);
    }

    void leave()
    {
        QDragLeaveEvent event;
        QApplication::sendEvent(view()->viewport(), &event);
    }

    // Through the settings dialog of the unit.
    void setChannel1(const QString& value)
    {
        QTimer::singleShot(0, qApp, [&] {
            QWidget* dialog = QApplication::activeModalWidget();
            QVERIFY(dialog);
            auto* channel = dialog->findChild<QComboBox*>("comboBoxCH1");
            channel->setCurrentIndex(channel->findText(value));
            dialog->findChild<QAbstractButton*>("pushButtonOK")->click();
        });
        const QPoint site = view()->mapFromScene(13.0, 13.0);
        QTest::mouseDClick(view()->viewport(), Qt::LeftButton, Qt::NoModifier, site);
    }

    HostFiles files{Design};

private:
    QMimeData m_mimeData;
};

void answerNextQuestion(QMessageBox::StandardButton answer)
{
    QTimer::singleShot(0, qApp, [answer] {
        if (auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget()))
            box->button(answer)->click();
    });
}

} // namespace

class TestPlanning : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void dropPlacesAndShows();
    void sitesDoNotLightUpWithNothingInHand();
    void consoleShowsEverything();
    void undoMenuNamesTheStep();
    void closingAsks_data();
    void closingAsks();
    void workThatIsBackIsSaid();
    void lockInDoubtIsAskedAbout_data();
    void lockInDoubtIsAskedAbout();
    void settingsDialogChangesOneThing_data();
    void settingsDialogChangesOneThing();
    void settingThatCannotBeKeptIsSaid();
    void snapshotShowsOccupiedAndFilteredSites();
    void findBoxNarrowsTheTree();
    void viewIsDrivenByCommands();
    void rowsAreFoundWhereverTheyAre();
    void longScriptsCanBeStopped();
    void anotherProjectOpensFromAScript();
};

void TestPlanning::dropPlacesAndShows()
{
    Planning planning;
    planning.dragTo("top/duo/a", {13, 13});
    planning.drag<QDropEvent>({13, 13});
    QCOMPARE(planning.siteOf("top/duo/a"), 11);
    QTRY_COMPARE(planning.row("top/duo/a")->text(1), "U0_CH0");
    QVERIFY(planning.consoleText().contains("zel_resource place -rsc {top/duo/a} -id 11"));
    QVERIFY(planning.window->isWindowModified());

    const auto message = [&] { return planning.window->statusBar()->currentMessage(); };
    planning.dragTo("top/core", {13, 13});
    QCOMPARE(message(), "U0_CH0 (Channel) does not take resources of type PLL");
    planning.drag<QDragMoveEvent>({80, 30});
    QCOMPARE(message(), "wedge takes no resource");
    planning.drag<QDragMoveEvent>({13, 13});
    planning.drag<QDropEvent>({13, 13});
    QVERIFY(message().isEmpty());
    QCOMPARE(planning.siteOf("top/core"), -1);
}

// The pointer has left, or the drag was cancelled, which the view is told in the same way.
void TestPlanning::sitesDoNotLightUpWithNothingInHand()
{
    Planning planning;
    auto* database = ZELChipViewDatabase::getInstance();
    planning.dragTo("top/duo/a", {13, 13});
    auto* timer = database->findChild<QTimer*>(QString(), Qt::FindDirectChildrenOnly);
    QVERIFY(timer->isActive());
    planning.leave();
    QVERIFY(!timer->isActive());
    planning.dragTo("top/duo/a", {13, 13});
    QTRY_VERIFY(!database->highlightedIds().isEmpty());
    planning.leave();
    QVERIFY(database->highlightedIds().isEmpty());
}

void TestPlanning::consoleShowsEverything()
{
    Planning planning;
    planning.run("puts {some output}; expr {6 * 7}");
    planning.run("zel_resource place -rsc nobody -id 3");
    const QString text = planning.consoleText();
    for (const char* piece : {"puts {some output}", "some output", "42", "there is no resource \"nobody\""})
        QVERIFY2(text.contains(QLatin1String(piece)), piece);
    QVERIFY(planning.window->statusBar()->currentMessage().contains("nobody"));
    planning.run("expr 1");
    QVERIFY(planning.window->statusBar()->currentMessage().isEmpty());
}

void TestPlanning::undoMenuNamesTheStep()
{
    Planning planning;
    QAction* undo = nullptr;
    const QList<QAction*> actions = planning.window->findChildren<QAction*>();
    for (QAction* action : actions)
        undo = action->shortcut() == QKeySequence(QKeySequence::Undo) ? action : undo;
    QVERIFY(undo && !undo->isEnabled());
    planning.run("zel_resource place -rsc top/core -id 50");
    QVERIFY(undo->isEnabled());
    QVERIFY(undo->text().contains("top/core"));
    undo->trigger();
    QCOMPARE(planning.siteOf("top/core"), -1);
    QVERIFY(!undo->isEnabled());
    QTRY_VERIFY(planning.row("top/core")->text(1).isEmpty());
    QVERIFY(!planning.window->isWindowModified());
}

void TestPlanning::closingAsks_data()
{
    QTest::addColumn<int>("answer");
    QTest::addColumn<bool>("isClosed");
    QTest::addColumn<int>("siteAfterwards");
    QTest::newRow("cancel stays") << int(QMessageBox::Cancel) << false << 50;
    QTest::newRow("save keeps the placement") << int(QMessageBox::Save) << true << 50;
    QTest::newRow("discard drops it") << int(QMessageBox::Discard) << true << -1;
}

// Also where one types it.
void TestPlanning::closingAsks()
{
    QFETCH(int, answer);
    Planning planning;
    QVERIFY(planning.window->close()); // nothing changed, nothing asked
    planning.window->show();
    planning.run("zel_resource place -rsc top/core -id 50");
    answerNextQuestion(QMessageBox::Cancel);
    planning.run("exit");
    QVERIFY(planning.consoleText().endsWith("the program goes on"));
    QVERIFY(planning.window->isWindowModified());
    answerNextQuestion(static_cast<QMessageBox::StandardButton>(answer));
    QTEST(planning.window->close(), "isClosed");
    planning.open();
    QTEST(planning.siteOf("top/core"), "siteAfterwards");
}

// In the status bar, in place of what else would stand there.
void TestPlanning::workThatIsBackIsSaid()
{
    Planning planning;
    planning.run("zel_resource place -rsc top/core -id 50");
    planning.open();
    QStatusBar* bar = planning.window->statusBar();
    QTRY_COMPARE(bar->currentMessage(), "1 change that was not saved is back.");
    QVERIFY(planning.consoleText().contains(bar->currentMessage()));
    const auto* element = bar->findChild<QLabel*>("element");
    QVERIFY(!element->isVisible());
    planning.window->hide();
    planning.window->show();
    QCoreApplication::processEvents();
    QVERIFY(!element->isVisible());
    const auto* legend = bar->findChild<QWidget*>("legend");
    const QRect place = legend->geometry();
    bar->clearMessage();
    QVERIFY(element->isVisible());
    QCoreApplication::processEvents();
    QCOMPARE(legend->geometry(), place);
}

void TestPlanning::lockInDoubtIsAskedAbout_data()
{
    zeltest::addRows({{"taken over", "Take Over", "50"}, {"only looked at", "Only Look", "{}"}});
}

void TestPlanning::lockInDoubtIsAskedAbout()
{
    const auto [text, site] = zeltest::currentRow<2>();
    Planning planning;
    QVERIFY(!planning.window->findChild<QMessageBox*>());
    planning.window.reset();
    planning.files.project.write("deux/journal.tcl.lock", "4711\nzelchip\nfarhost\n\n\n");
    planning.open();
    auto* box = planning.window->findChild<QMessageBox*>();
    QVERIFY(box && box->informativeText().contains("4711 on farhost"));
    const QList<QAbstractButton*> buttons = box->buttons();
    for (QAbstractButton* button : buttons) {
        if (button->text().remove('&') == text)
            button->click();
    }
    QTRY_VERIFY(!planning.window->findChild<QMessageBox*>());
    planning.run("zel_resource place -rsc top/core -id 50");
    planning.run("zel_resource get -ip top/core");
    QVERIFY(planning.consoleText().contains("name top/core id " + site + ' '));
}

void TestPlanning::settingsDialogChangesOneThing_data()
{
    zeltest::addRows({
        {"nothing", "SLOW", "SLOW SLOW"},
        {"a value of its own", "FAST", "SLOW FAST", "one step"},
        {"a value for both channels", "OFF", "OFF OFF", "one step"},
    });
}

// What is chosen in the list of channel 1.
void TestPlanning::settingsDialogChangesOneThing()
{
    const auto [chosen, channels, step] = zeltest::currentRow<3>();
    const int steps = step.isEmpty() ? 0 : 1;
    Planning planning;
    planning.setChannel1(chosen);
    DesignEditor& editor = planning.editor();
    const auto& settings = editor.engine().settings();
    QCOMPARE(settings.value(10, "CH0") + ' ' + settings.value(10, "CH1"), channels);
    QCOMPARE(editor.undoStack().count(), steps);
    QFile file(planning.files.project.path() + "/deux/journal.tcl");
    const QString journal = file.open(QIODevice::ReadOnly) ? QString::fromUtf8(file.readAll()) : QString();
    const QRegularExpression kept("^#[^\n]*\nzel_setting -id 11 -key CH\\d -value " + chosen + "\n$");
    QCOMPARE(kept.match(journal).hasMatch(), steps > 0);
    QCoreApplication::processEvents();
    QCOMPARE(planning.window->isWindowModified(), steps > 0);
    planning.run("catch undo");
    QVERIFY(!planning.window->isWindowModified());
}

void TestPlanning::settingThatCannotBeKeptIsSaid()
{
    Planning planning;
    QVERIFY(QDir().mkpath(planning.files.project.path() + "/deux/journal.tcl")); // a folder
    planning.setChannel1("FAST");
    QCOMPARE(planning.editor().engine().settings().value(10, "CH1"), "SLOW");
    const QString reason = "the change cannot be kept in ";
    QVERIFY(planning.window->statusBar()->currentMessage().startsWith(reason));
    QVERIFY(planning.consoleText().contains(reason));
    QCoreApplication::processEvents();
    QVERIFY(!planning.window->isWindowModified());
    QCOMPARE(planning.chipView()->getDirtyFlag(), 0);
}

void TestPlanning::snapshotShowsOccupiedAndFilteredSites()
{
    Planning planning;
    const auto colorInSnapshot = [&] {
        const QString file = planning.files.path("sites.png");
        planning.run(QStringLiteral("zel_view snapshot {%1}").arg(file));
        QWidget* viewport = planning.view()->viewport();
        return QImage(file).pixelColor(
            viewport->mapTo(planning.window.get(), planning.view()->mapFromScene(13.0, 13.0)));
    };
    QCOMPARE(colorInSnapshot(), QColor(0xa0, 0xc0, 0xe0)); // as drawn
    planning.run("zel_resource place -rsc top/duo/a -id 11");
    QCOMPARE(colorInSnapshot(), QColor(0xa6, 0x90, 0xd2)); // of an occupied channel
    const QList<QCheckBox*> kinds = ZELChipViewDatabase::getInstance()->getViewFilterMenu()->findChildren<QCheckBox*>();
    QCOMPARE(kinds.size(), 2);
    kinds.last()->click();
    QCOMPARE(colorInSnapshot(), FILTER_FILL_COLOR);
    planning.run("undo");
    kinds.last()->click();
    QCOMPARE(colorInSnapshot(), QColor(0xa0, 0xc0, 0xe0));
}

void TestPlanning::findBoxNarrowsTheTree()
{
    Planning planning;
    const auto isShown = [&](const char* name) { return !planning.row(QLatin1String(name))->isHidden(); };
    planning.tree()->collapseAll();
    QTest::keyClicks(planning.findBox(), "  "); // nothing yet
    QVERIFY(isShown("top/core") && !planning.row("top/duo")->isExpanded());
    QTest::keyClicks(planning.findBox(), "B");
    QVERIFY(isShown("top/duo/b") && isShown("top/duo") && !isShown("top/duo/a") && !isShown("top/core"));
    planning.run("zel_resource place -rsc top/duo/b -id 11"); // the rows are made anew
    QTRY_VERIFY(!isShown("top/core"));
    QTest::keyClick(planning.findBox(), Qt::Key_Return);
    QCOMPARE(planning.tree()->currentItem(), planning.row("top/duo/b"));
    const QRectF shown = planning.view()->mapToScene(planning.view()->viewport()->rect()).boundingRect();
    QVERIFY(shown.contains(QRectF(11, 11, 38, 38)) && shown.width() < 150);
    QTest::keyClick(planning.findBox(), Qt::Key_Escape);
    QVERIFY(isShown("top/core") && planning.findBox()->text().isEmpty());
}

void TestPlanning::viewIsDrivenByCommands()
{
    Planning planning;
    planning.run("zel_view select 11; puts <[zel_view selected]>");
    QVERIFY(planning.consoleText().contains("<11>"));
    planning.run("zel_view mode pan; puts <[zel_view mode]>");
    QVERIFY(planning.consoleText().contains("<pan>"));
    const QPoint middle = planning.view()->viewport()->mapToGlobal(planning.view()->mapFromScene(30.0, 30.0));
    planning.run("puts <[zel_view where -id 11]>");
    QVERIFY(planning.consoleText().contains(QStringLiteral("<%1 %2>").arg(middle.x()).arg(middle.y())));
    const double before = planning.view()->transform().m11();
    planning.run("zel_view in; zel_tree select -rsc top/core");
    QVERIFY(planning.view()->transform().m11() > before);
    QCOMPARE(planning.tree()->currentItem(), planning.row("top/core"));
    planning.run("zel_view where -id 4711");
    QVERIFY(planning.consoleText().contains("there is no element 4711"));
    planning.run("zel_view zoom 11; zel_view where -id 12; zel_view fit");
    QCOMPARE(planning.view()->transform().m11(), before);
}

// In a tree that shows a few rows only, some of them wider than it.
void TestPlanning::rowsAreFoundWhereverTheyAre()
{
    Planning planning;
    QByteArray resources;
    for (int i = 0; i < 30; ++i)
        resources += "{\"name\": \"r" + QByteArray::number(i) + QByteArray(i % 7 == 3 ? 80 : 1, 'x')
            + "\", \"type\": \"IP\", \"children\": [{\"name\": \"a\", \"type\": \"DCUCHANNEL\"}]},";
    resources.chop(1);
    planning.files.project.write("design.json", designWith('[' + resources + ']'));
    planning.open();
    planning.window->resize(640, 400);
    QCoreApplication::processEvents();
    QWidget* viewport = planning.tree()->viewport();
    const auto& design = planning.editor().engine().design();
    for (const char* before : {"", "zel_tree collapse;", "zel_tree expand;"}) {
        for (int index : design.all()) {
            const QString& path = design.resource(index).path;
            planning.tree()->horizontalScrollBar()->setValue(planning.tree()->horizontalScrollBar()->maximum());
            planning.run(QLatin1String(before) + QStringLiteral("set where [zel_tree where -rsc {%1}]").arg(path));
            const QStringList where = planning.consoleText().section(QLatin1Char('\n'), -1).split(QLatin1Char(' '));
            const QPoint point = viewport->mapFromGlobal(QPoint(where.value(0).toInt(), where.value(1).toInt()));
            QVERIFY2(viewport->rect().contains(point), qPrintable(path + planning.consoleText().right(100)));
            QCOMPARE(planning.tree()->itemAt(point), planning.row(path));
        }
    }
    // Where one has scrolled to one stays, whatever is placed.
    planning.tree()->scrollToItem(planning.row("top/r20x/a"), QAbstractItemView::PositionAtTop);
    planning.run("zel_resource place -rsc top/r20x/a -id 11");
    QTRY_COMPARE(planning.tree()->itemAt(1, 1), planning.row("top/r20x/a"));
    QTest::keyClicks(planning.findBox(), "r5");
    planning.run("zel_tree where -rsc top/r20x");
    QVERIFY(planning.consoleText().endsWith("the row of \"top/r20x\" is not shown"));
}

void TestPlanning::longScriptsCanBeStopped()
{
    Planning planning;
    QTimer::singleShot(250, qApp, [&] { QTest::keyClick(planning.window.get(), Qt::Key_Escape); });
    QElapsedTimer clock;
    clock.start();
    planning.run("while 1 {}");
    QVERIFY(clock.elapsed() < 10000);
    QVERIFY(planning.consoleText().contains("cancelled"));
    planning.run("expr 40+2");
    QVERIFY(planning.consoleText().contains("42"));
}

void TestPlanning::anotherProjectOpensFromAScript()
{
    Planning planning;
    const QString drawing = planning.files.write("other drawing.svg", smallDrawing());
    const int viewWidth = planning.view()->width();
    const int consoleHeight = planning.console()->height();
    planning.run(QStringLiteral("zel_project open {%1}; puts <[zel_project info]>").arg(drawing));
    QVERIFY(planning.window->windowTitle().contains("other drawing.svg"));
    QVERIFY(planning.consoleText().contains("<name {other drawing}"));
    // Each part is as large as before.
    QTRY_COMPARE(planning.view()->width(), viewWidth);
    QCOMPARE(planning.console()->height(), consoleHeight);
    planning.run("zel_project open /nowhere");
    QVERIFY(planning.consoleText().contains("there is no such file or folder"));
    QVERIFY(planning.window->windowTitle().contains("other drawing.svg"));
}

ZEL_TEST_MAIN(TestPlanning)
#include "tst_planning.moc"
