// SPDX-License-Identifier: MIT
#include "host/tcl/commandtable.h"
#include "host/widgets/findbox.h"
#include "planning/locklayer.h"
#include "tests/host/hostfiles.h"
#include "tests/host/shownwindow.h"
#include "tests/support/events.h"
#include "tests/support/testmain.h"

#include <QAbstractButton>
#include <QAction>
#include <QApplication>
#include <QCheckBox>
#include <QClipboard>
#include <QComboBox>
#include <QDir>
#include <QElapsedTimer>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
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
  {"name": "core", "type": "PLL"}, {"name": "held", "type": "UVCCIO", "site": "V0_1", "fixed": true}
])";

// The program's window on a project with something to place.
class Planning : public ShownWindow
{
public:
    explicit Planning(const QByteArray& resources = Design)
        : files(resources)
    {
        open();
    }
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
        zeltest::drag<Event>(view()->viewport(), view()->mapFromScene(scenePosition));
    }

    void choose(const QString& text)
    {
        for (QAction* action : window->findChildren<QAction*>()) {
            if (action->text().remove('&') == text)
                action->trigger();
        }
    }

    static void answer(QMessageBox* box, const QString& text)
    {
        for (QAbstractButton* button : box->buttons()) {
            if (button->text().remove('&') == text)
                button->click();
        }
    }

    void leave() { zeltest::leaveDrag(view()->viewport()); }

    [[nodiscard]] QString message() const { return window->statusBar()->currentMessage(); }

    // Runs a script in the console, and returns the last line that is then there.
    QString answerTo(const QString& script)
    {
        run(script);
        return consoleText().section('\n', -1);
    }

    // Chooses in the settings dialog of the unit.
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

    HostFiles files;
};

} // namespace

class TestPlanning : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void dropPlacesAndShows()
    {
        Planning planning;
        planning.dragTo("top/duo/a", {13, 13});
        planning.drag<QDropEvent>({13, 13});
        QCOMPARE(planning.siteOf("top/duo/a"), 11);
        QTRY_COMPARE(planning.row("top/duo/a")->text(1), "U0_CH0");
        QVERIFY(planning.row("top/duo/a")->isSelected()); // it was made anew
        QVERIFY(planning.consoleText().contains("zel_resource place -rsc {top/duo/a} -id 11"));
        QVERIFY(planning.window->isWindowModified());

        planning.dragTo("top/core", {13, 13});
        QCOMPARE(planning.message(), "U0_CH0 (Channel) does not take resources of type PLL");
        planning.drag<QDragMoveEvent>({80, 30});
        QCOMPARE(planning.message(), "wedge takes no resource");
        planning.drag<QDragMoveEvent>({13, 13});
        planning.drag<QDropEvent>({13, 13});
        QCOMPARE(planning.message(), "U0_CH0 (Channel) does not take resources of type PLL");
        QCOMPARE(planning.siteOf("top/core"), -1);
        QCOMPARE(ZELChipViewDatabase::getInstance()->place("top/ip", "11"), 0); // a failed command is answered and said
        QCOMPARE(planning.message(), "There is no resource \"top/ip\"");
    }

    // The search is in a thread, so the answer comes later.
    void theRestIsPlacedFromTheMenu()
    {
        Planning planning;
        planning.choose("Place the Rest");
        QTRY_COMPARE(planning.message(), "3 resources were placed.");
        QVERIFY(planning.siteOf("top/duo/a") == 11 || planning.siteOf("top/duo/a") == 12);
        planning.choose("Place the Rest");
        QCOMPARE(planning.message(), "Everything is placed.");
        planning.run("undo");
        QCOMPARE(planning.siteOf("top/core"), -1);
    }

    void whatCannotBePlacedIsSaid()
    {
        Planning planning(QByteArray(Design).replace("\"core\"",
            "\"p\", \"type\": \"PLL\"}, {\"name\": \"q\", "
            "\"type\": \"PLL\"}, {\"name\": \"core\""));
        planning.choose("Place the Rest");
        QTRY_VERIFY(planning.window->findChild<QMessageBox*>("autoPlaceAnswer"));
        auto* box = planning.window->findChild<QMessageBox*>("autoPlaceAnswer");
        QVERIFY2(box->informativeText().startsWith("top/p, top/q and top/core cannot be placed together"),
            qPrintable(box->informativeText()));
        QVERIFY(box->informativeText().endsWith("4 of 5 resources can be placed."));
        Planning::answer(box, "Place These");
        QCOMPARE(planning.message(), "4 resources were placed.");
        QVERIFY(planning.siteOf("top/duo/b") >= 0);
    }

    void rowThatStaysSaysWhy()
    {
        Planning planning;
        planning.tree()->setCurrentItem(planning.row("top/held"));
        QMouseEvent move(QEvent::MouseMove, QPointF(5, 5), QPointF(), Qt::NoButton, Qt::LeftButton, {});
        QApplication::sendEvent(planning.tree()->viewport(), &move);
        QCOMPARE(planning.message(), "top/held is fixed on V0_1");
        const auto* note = planning.window->findChild<QLabel*>("pointerNote");
        QVERIFY(note->isVisible() && note->text() == planning.message());
        QTest::mouseMove(planning.tree()->viewport(), QPoint(9, 9));
        planning.window->hide();
        planning.window->show();
        QVERIFY(note->isVisible());
        QTest::keyClick(planning.tree(), Qt::Key_Down);
        QVERIFY(!note->isVisible());
    }

    void lockIsSeenAndHeardAndHolds()
    {
        Planning planning;
        planning.run("zel_resource place -rsc top/duo/a -id 11");
        QTRY_COMPARE(planning.row("top/duo/a")->text(1), "U0_CH0");
        planning.tree()->setCurrentItem(planning.row("top/duo/a"));
        const auto picture = [&planning] {
            const QRect row = planning.tree()->visualItemRect(planning.row("top/duo/a"));
            return planning.tree()->viewport()->grab(row).toImage();
        };
        const QImage unlockedRow = picture();
        planning.choose("Lock");
        QTRY_COMPARE(planning.row("top/duo/a")->toolTip(0), "locked on U0_CH0");
        QCOMPARE(planning.row("top/duo/a")->data(0, Qt::AccessibleDescriptionRole), "locked on U0_CH0");
        QVERIFY(planning.consoleText().contains("zel_resource lock -ip top/duo/a"));
        QVERIFY(picture() != unlockedRow);
        auto* layer = planning.view()->findChild<LockLayer*>();
        QCOMPARE(layer->elements(), std::vector<int>{11});
        const QImage marked = planning.view()->viewport()->grab().toImage();
        layer->setShown(false);
        QVERIFY(planning.view()->viewport()->grab().toImage() != marked);
        planning.dragTo("top/duo/a", {13, 13});
        QCOMPARE(planning.message(), "top/duo/a is locked on U0_CH0; unlock it first");
        planning.leave();
        planning.choose("Unlock");
        QTRY_COMPARE(picture(), unlockedRow);
        QVERIFY(layer->elements().empty());
        planning.choose("Unlock");
        QCOMPARE(planning.message(), "top/duo/a is not locked");
    }

    void clickOnTheSelectedRowMarksItsElements()
    {
        Planning planning;
        planning.run("zel_resource place -rsc top/core -id 50");
        auto& selected = ZELChipViewDatabase::getInstance()->selectedIds();
        const auto click = [&planning] {
            const QPoint row = planning.tree()->visualItemRect(planning.row("top/core")).center();
            QTest::mouseClick(planning.tree()->viewport(), Qt::LeftButton, {}, row);
        };
        QTRY_VERIFY(!planning.row("top/core")->text(1).isEmpty());
        click();
        QVERIFY(selected.contains(50));
        planning.view()->scene()->clearSelection();
        ZELChipViewDatabase::getInstance()->removeSelectedItem(50);
        QVERIFY(!selected.contains(50));
        click();
        QVERIFY(selected.contains(50));
    }

    // The drawing scrolls while the drag is held at a border, and the wheel works as it does without a drag.
    void drawingMovesBelowADrag()
    {
        Planning planning;
        for (int step = 0; step < 5; ++step)
            planning.view()->zoomIn();
        QScrollBar* bar = planning.view()->verticalScrollBar();
        QWidget* viewport = planning.view()->viewport();
        const int start = bar->value();
        planning.tree()->setCurrentItem(planning.row("top/core"));
        zeltest::drag<QDragEnterEvent>(viewport, viewport->rect().center());
        zeltest::drag<QDragMoveEvent>(viewport, {viewport->width() / 2, viewport->height() - 4});
        QTRY_VERIFY(bar->value() > start + 100);
        zeltest::drag<QDragMoveEvent>(viewport, viewport->rect().center());
        const int held = bar->value();
        QTest::qWait(60);
        QCOMPARE(bar->value(), held);
        // A dialog takes away the events that end the drag.
        zeltest::drag<QDragMoveEvent>(viewport, {viewport->width() / 2, 4});
        QTRY_VERIFY(bar->value() < held);
        QEvent blocked(QEvent::WindowBlocked);
        QApplication::sendEvent(planning.window.get(), &blocked);
        const int left = bar->value();
        QTest::qWait(60);
        QCOMPARE(bar->value(), left);
    }

    // The view is told in the same way that the pointer has left and that the drag was cancelled.
    void sitesDoNotLightUpWithNothingInHand()
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

    void consoleShowsEverything()
    {
        Planning planning;
        planning.run("puts {some output}; expr {6 * 7}");
        planning.run("zel_resource place -rsc nobody -id 3");
        const QString text = planning.consoleText();
        for (const char* piece : {"puts {some output}", "some output", "42", "there is no resource \"nobody\""})
            QVERIFY2(text.contains(QLatin1String(piece)), piece);
        QVERIFY(planning.message().contains("nobody"));
        planning.run("expr 1");
        QVERIFY(planning.message().isEmpty());
    }

    void undoMenuNamesTheStep()
    {
        Planning planning;
        QAction* undo = nullptr;
        for (QAction* action : planning.window->findChildren<QAction*>())
            undo = action->shortcut() == QKeySequence(QKeySequence::Undo) ? action : undo;
        QVERIFY(undo && !undo->isEnabled());
        planning.run("zel_resource place -rsc top/core -id 50");
        QVERIFY(undo->isEnabled());
        QVERIFY(undo->text().contains("top/core"));
        QVERIFY(undo->toolTip().startsWith("Undo: Place top/core ("));
        undo->trigger();
        QCOMPARE(planning.message(), "Undone: Place top/core");
        QCOMPARE(planning.siteOf("top/core"), -1);
        QVERIFY(!undo->isEnabled());
        QTRY_VERIFY(planning.row("top/core")->text(1).isEmpty());
        QVERIFY(!planning.window->isWindowModified());
    }

    void closingAsks_data()
    {
        const Rows<QMessageBox::StandardButton, bool, int> row; // the answer, whether it closes, the site afterwards
        row("cancel stays", QMessageBox::Cancel, false, 50);
        row("save keeps the placement", QMessageBox::Save, true, 50);
        row("discard drops it", QMessageBox::Discard, true, -1);
    }

    // The window asks as well where "exit" is typed.
    void closingAsks()
    {
        const auto [answer, isClosed, site] = row<QMessageBox::StandardButton, bool, int>();
        Planning planning;
        QVERIFY(planning.window->close()); // nothing changed, nothing asked
        planning.window->show();
        planning.run("zel_resource place -rsc top/core -id 50");
        zeltest::answerNextQuestion(QMessageBox::Cancel);
        planning.run("exit");
        QVERIFY(planning.consoleText().endsWith("the program goes on"));
        QVERIFY(planning.window->isWindowModified());
        zeltest::answerNextQuestion(answer);
        QCOMPARE(planning.window->close(), isClosed);
        planning.open();
        QCOMPARE(planning.siteOf("top/core"), site);
    }

    // The status bar says so in place of what else would stand there.
    void workThatIsBackIsSaid()
    {
        Planning planning;
        planning.run("zel_resource place -rsc top/core -id 50");
        planning.open();
        QStatusBar* bar = planning.window->statusBar();
        QTRY_COMPARE(bar->currentMessage(), "1 change that was not saved is back.");
        QVERIFY(planning.consoleText().contains(bar->currentMessage()));
        const auto* first = bar->findChild<QLabel*>("element");
        const auto* legend = bar->findChild<QWidget*>("legend");
        QCOMPARE(first->text(), bar->currentMessage());
        QVERIFY(legend->isVisible());
        bar->showMessage(QString(500, 'm'));
        QVERIFY(!legend->isVisible()); // the message needs its room
        bar->clearMessage();
        QVERIFY(legend->isVisible() && first->text().contains("elements"));
    }

    void lockInDoubtIsAskedAbout()
    {
        // The project is taken over or only looked at.
        for (const auto& [text, site] : {std::pair("Take Over", "50"), std::pair("Only Look", "{}")}) {
            Planning planning;
            QVERIFY(!planning.window->findChild<QMessageBox*>());
            planning.window.reset();
            planning.files.project.write("deux/journal.tcl.lock", "4711\nzelchip\nfarhost\n\n\n");
            planning.open();
            auto* box = planning.window->findChild<QMessageBox*>();
            QVERIFY(box && box->informativeText().contains("4711 on farhost"));
            Planning::answer(box, text);
            QTRY_VERIFY(!planning.window->findChild<QMessageBox*>());
            planning.run("zel_resource place -rsc top/core -id 50");
            QVERIFY(planning.answerTo("zel_resource get -ip top/core")
                        .startsWith(QString("name top/core id %1 ").arg(site)));
        }
    }

    void settingsDialogChangesOneThing_data()
    {
        const Rows<QString, QString, int> row;
        row("nothing", "SLOW", "SLOW SLOW", 0);
        row("a value of its own", "FAST", "SLOW FAST", 1);
        row("a value for both channels", "OFF", "OFF OFF", 1);
    }

    // The user chooses in the list of channel 1.
    void settingsDialogChangesOneThing()
    {
        const auto [chosen, channels, steps] = row<QString, QString, int>();
        Planning planning;
        planning.setChannel1(chosen);
        DesignEditor& editor = planning.editor();
        const auto& settings = editor.engine().settings();
        QCOMPARE(settings.value(10, "CH0") + ' ' + settings.value(10, "CH1"), channels);
        QCOMPARE(editor.undoStack().count(), steps);
        const QRegularExpression kept("^#[^\n]*\nzel_setting -id 11 -key CH\\d -value " + chosen + "\n$");
        const QString journal = zeltest::contentOf(planning.files.project.path() + "/deux/journal.tcl");
        QCOMPARE(kept.match(journal).hasMatch(), steps > 0);
        QCoreApplication::processEvents();
        QCOMPARE(planning.window->isWindowModified(), steps > 0);
        planning.run("catch undo");
        QVERIFY(!planning.window->isWindowModified());
    }

    void settingThatCannotBeKeptIsSaid()
    {
        Planning planning;
        QVERIFY(QDir().mkpath(planning.files.project.path() + "/deux/journal.tcl")); // a folder
        planning.setChannel1("FAST");
        QCOMPARE(planning.editor().engine().settings().value(10, "CH1"), "SLOW");
        QVERIFY(planning.message().startsWith("The change cannot be kept in "));
        QVERIFY(planning.consoleText().contains("the change cannot be kept in "));
        QCoreApplication::processEvents();
        QVERIFY(!planning.window->isWindowModified());
        QCOMPARE(planning.chipView()->getDirtyFlag(), 0);
    }

    void snapshotShowsOccupiedAndFilteredSites()
    {
        Planning planning;
        const auto colorInSnapshot = [&] {
            const QString file = planning.files.path("sites.png");
            planning.run(QString("zel_view snapshot {%1}").arg(file));
            QWidget* viewport = planning.view()->viewport();
            return QImage(file).pixelColor(
                viewport->mapTo(planning.window.get(), planning.view()->mapFromScene(13.0, 13.0)));
        };
        QCOMPARE(colorInSnapshot(), QColor(0xa0, 0xc0, 0xe0)); // as drawn
        planning.run("zel_resource place -rsc top/duo/a -id 11");
        QCOMPARE(colorInSnapshot(), QColor(0xa6, 0x90, 0xd2)); // of an occupied channel
        const QList<QCheckBox*> kinds
            = ZELChipViewDatabase::getInstance()->getViewFilterMenu()->findChildren<QCheckBox*>();
        QCOMPARE(kinds.size(), 2);
        kinds.last()->click();
        QCOMPARE(colorInSnapshot(), FILTER_FILL_COLOR);
        planning.run("undo");
        kinds.last()->click();
        QCOMPARE(colorInSnapshot(), QColor(0xa0, 0xc0, 0xe0));
    }

    // The scale and what lies under the pointer, both changed by the script that takes the snapshot.
    void snapshotHasAnUpToDateStatusBar()
    {
        Planning planning;
        QMouseEvent move(QEvent::MouseMove, QPointF(planning.view()->mapFromScene(13.0, 13.0)), QPointF(), Qt::NoButton,
            Qt::NoButton, Qt::NoModifier);
        QApplication::sendEvent(planning.view()->viewport(), &move);
        const QString before = planning.label("element");
        const QString file = planning.files.path("status.png");
        planning.run("zel_resource place -rsc top/duo/a -id 11; zel_view in; zel_view snapshot {" + file + '}');
        QVERIFY(planning.label("element") != before);
        const QImage picture(file);
        for (const char* name : {"element", "magnification"}) {
            auto* label = planning.window->findChild<QLabel*>(name);
            const QPoint corner = label->mapTo(planning.window.get(), QPoint());
            QCOMPARE(picture.copy(QRect(corner, label->size())),
                planning.window->grab(QRect(corner, label->size())).toImage().convertToFormat(picture.format()));
        }
    }

    // Layouts and fits that were due when the script zoomed do not move anything behind its back.
    void placesStayWhatACommandSays()
    {
        Planning planning;
        const QString drawing = planning.files.write("other.svg", smallDrawing());
        for (const QString& before : {QString(), QString("zel_project open {%1};").arg(drawing)}) {
            planning.window->resize(planning.window->size() + QSize(90, 50));
            const QString zoomed = planning.answerTo(before + "zel_view zoom 11 12; zel_view where -id 11");
            QTest::qWait(50);
            QCOMPARE(planning.answerTo("zel_view where -id 11"), zoomed);
        }
    }

    void findBoxNarrowsTheTree()
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

    void viewIsDrivenByCommands()
    {
        Planning planning;
        QCOMPARE(planning.answerTo("zel_view select 11; zel_view selected"), "11");
        QCOMPARE(planning.answerTo("zel_view mode pan; zel_view mode"), "pan");
        const QPoint middle = planning.view()->viewport()->mapToGlobal(planning.view()->mapFromScene(30.0, 30.0));
        QCOMPARE(planning.answerTo("zel_view where -id 11"), QString("%1 %2").arg(middle.x()).arg(middle.y()));
        const double before = planning.view()->transform().m11();
        planning.run("zel_view in; zel_tree select -rsc top/core");
        QVERIFY(planning.view()->transform().m11() > before);
        QCOMPARE(planning.tree()->currentItem(), planning.row("top/core"));
        QCOMPARE(planning.answerTo("zel_view where -id 4711"), "there is no element 4711");
        // A script need not wait until the window is up to date.
        planning.run("zel_resource remove -ip top/duo; zel_project refresh");
        planning.run("zel_resource restore -ip top/duo; zel_tree select -rsc top/duo/b");
        QCOMPARE(planning.tree()->currentItem(), planning.row("top/duo/b"));
        planning.run("zel_view zoom 11; zel_view where -id 12; zel_view fit");
        QCOMPARE(planning.view()->transform().m11(), before);
    }

    void aidsAreDrivenByCommandsAndFollowTheDesign()
    {
        Planning planning;
        const auto picture = [&planning](const QString& script) {
            planning.run(script);
            QCoreApplication::processEvents();
            return planning.view()->viewport()->grab().toImage();
        };
        QCOMPARE(planning.answerTo("zel_view connections"), "selected");
        QCOMPARE(planning.answerTo("zel_view connections all; zel_view connections"), "all");
        QVERIFY(planning.answerTo("zel_view connections most").contains("off|selected|all"));
        QVERIFY(planning.answerTo("zel_view candidates yes").contains("0|1"));
        QCOMPARE(planning.answerTo("zel_view candidates"), "1");
        planning.run("zel_tree select -rsc top/duo/a");
        const QImage untinted = picture("zel_view candidates 0");
        QVERIFY(picture("zel_view candidates 1") != untinted);
        const QImage placed = picture("zel_resource place -rsc top/duo/a -id 11");
        QVERIFY(picture("zel_view candidates 0") == placed);
        planning.run("zel_view candidates 1; undo");
        QTRY_VERIFY(picture({}) != untinted);
    }

    // The tree shows a few rows only, some of which are wider than itself.
    void rowsAreFoundWhereverTheyAre()
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
                const QString where = planning.answerTo(before + ("zel_tree where -rsc {" + path + '}'));
                const QPoint point
                    = viewport->mapFromGlobal(QPoint(where.section(' ', 0, 0).toInt(), where.section(' ', 1).toInt()));
                QVERIFY2(viewport->rect().contains(point), qPrintable(path + planning.consoleText().right(100)));
                QCOMPARE(planning.tree()->itemAt(point), planning.row(path));
            }
        }
        // The tree stays where one has scrolled to, whatever is placed.
        planning.tree()->scrollToItem(planning.row("top/r20x/a"), QAbstractItemView::PositionAtTop);
        planning.run("zel_resource place -rsc top/r20x/a -id 11");
        QTRY_COMPARE(planning.tree()->itemAt(1, 1), planning.row("top/r20x/a"));
        QTest::keyClicks(planning.findBox(), "r5");
        QCOMPARE(planning.answerTo("zel_tree where -rsc top/r20x"), "the row of \"top/r20x\" is not shown");
    }

    void longScriptsCanBeStopped_data()
    {
        // The widget that gets the key, the key, whether there is something to copy, which stops no script.
        const Rows<QString, QKeySequence, bool> row;
        row("by Escape in the drawing", "", QKeySequence("Esc"), false);
        row("by Ctrl+C in the input", "consoleInput", QKeySequence("Ctrl+C"), false);
        row("by Ctrl+C in the output", "consoleOutput", QKeySequence("Ctrl+C"), false);
        row("not by a copy in the output", "consoleOutput", QKeySequence("Ctrl+C"), true);
        row("not by Ctrl+C in the drawing", "", QKeySequence("Ctrl+C"), true);
    }

    void longScriptsCanBeStopped()
    {
        const auto [name, key, isCopied] = row<QString, QKeySequence, bool>();
        Planning planning;
        planning.run("puts {to be copied}");
        QApplication::clipboard()->clear();
        if (isCopied)
            planning.console()->findChild<QPlainTextEdit*>("consoleOutput")->selectAll();
        QWidget* receiver = planning.view()->viewport();
        if (!name.isEmpty())
            receiver = planning.console()->findChild<QWidget*>(name);
        QTimer::singleShot(250, qApp, [=, key = key] { QTest::keySequence(receiver, key); });
        QElapsedTimer clock;
        clock.start();
        const QString answer = planning.answerTo(isCopied ? "after 500; expr 40+2" : "while 1 {}");
        QVERIFY2(isCopied ? answer == "42" : answer.contains("cancelled"), qPrintable(answer));
        QVERIFY(clock.elapsed() < 10000);
        QCOMPARE(QApplication::clipboard()->text().contains("to be copied"), isCopied && !name.isEmpty());
        QCOMPARE(planning.answerTo("expr 40+2"), "42");
    }

    // Also after something was typed and taken back.
    void undoInAnEmptyInputIsTheWindows()
    {
        Planning planning;
        QApplication::setActiveWindow(planning.window.get());
        auto* input = planning.console()->findChild<QPlainTextEdit*>("consoleInput");
        input->setFocus();
        planning.run("zel_resource place -rsc top/core -id 50");
        QTest::keyClicks(input, "zel");
        QTest::keySequence(input, QKeySequence("Ctrl+Z"));
        QCOMPARE(planning.siteOf("top/core"), 50);
        QVERIFY(input->document()->isEmpty());
        QTest::keySequence(input, QKeySequence("Ctrl+Z"));
        QCOMPARE(planning.siteOf("top/core"), -1);
        QTest::keySequence(input, QKeySequence("Ctrl+Z")); // nothing to undo
        QVERIFY(input->document()->isEmpty());
        QTest::keySequence(input, QKeySequence(QKeySequence::Redo));
        QCOMPARE(planning.siteOf("top/core"), 50);
    }

    void anotherProjectOpensFromAScript()
    {
        Planning planning;
        const QString drawing = planning.files.write("other drawing.svg", smallDrawing());
        const int viewWidth = planning.view()->width();
        const int consoleHeight = planning.console()->height();
        planning.run(QString("zel_project open {%1}; puts <[zel_project info]>").arg(drawing));
        QVERIFY(planning.window->windowTitle().contains("other drawing.svg"));
        QVERIFY(planning.consoleText().contains("<name {other drawing}"));
        // Each part of the window is as large as before.
        QTRY_COMPARE(planning.view()->width(), viewWidth);
        QCOMPARE(planning.console()->height(), consoleHeight);
        QVERIFY(planning.answerTo("zel_project open /nowhere").contains("there is no such file or folder"));
        QVERIFY(planning.window->windowTitle().contains("other drawing.svg"));
    }

    // What is handled is in the table of commands, and the other way round.
    void tableHasAllCommands()
    {
        Planning planning;
        const auto sorted = [](QStringList words) {
            words.sort();
            return words;
        };
        const QStringList ofTcl = TclInterpreter().commandNames();
        QStringList added;
        for (const QString& command : planning.answerTo("info commands").split(' ')) {
            if (!ofTcl.contains(command))
                added.append(command);
        }
        QCOMPARE(sorted(added), sorted(tableCommands()));
        for (const QString& command : added) {
            if (!subcommandsOf(command).isEmpty())
                QCOMPARE(planning.answerTo(command + " nothing").section("must be ", 1).split(", "),
                    sorted(subcommandsOf(command)));
        }
    }

    // A number is an id, and anything else a name; the journal has ids.
    void sitesAreNamed()
    {
        Planning planning;
        planning.files.project.write("device.json", smallDevice().replace("\"PLL_EDGE\"", "\"50\""));
        planning.open();
        QCOMPARE(planning.answerTo("expr {[zel_view where -id U0_CH0] eq [zel_view where -id 11]}"), "1");
        QCOMPARE(planning.answerTo("zel_view select U0_CH0 U0_CH1; zel_view selected"), "11 12");
        QCOMPARE(planning.answerTo("zel_view zoom U7"), "there is no site \"U7\"");
        QCOMPARE(planning.answerTo("zel_view where -id P1"), "there is no element P1");
        planning.run("zel_resource place -rsc top/duo/a -id U0_CH0; zel_resource place -rsc top/core -id 50");
        planning.run("zel_setting -id U0 -key CH1 -value FAST");
        QCOMPARE(planning.siteOf("top/core"), 50);
        const QString journal = zeltest::contentOf(planning.files.project.path() + "/deux/journal.tcl");
        QCOMPARE(journal.section('\n', 1),
            "zel_resource place -rsc top/duo/a -id 11\nzel_resource place -rsc top/core -id 50\n"
            "zel_setting -id 10 -key CH1 -value FAST\n");
    }
};

ZEL_TEST_MAIN(TestPlanning)
#include "tst_planning.moc"
