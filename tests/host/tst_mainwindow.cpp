// SPDX-License-Identifier: MIT
#include "graphics/elements/elementidset.h"
#include "graphics/zelgraphicsscene.h"
#include "host/widgets/chipstatusbar.h"
#include "host/widgets/loadprogress.h"
#include "tests/host/hostfiles.h"
#include "tests/host/shownwindow.h"
#include "tests/support/events.h"
#include "tests/support/testmain.h"

#include <QAction>
#include <QApplication>
#include <QDialog>
#include <QDir>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMouseEvent>
#include <QProgressDialog>
#include <QPushButton>
#include <QRubberBand>
#include <QScrollBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>
#include <QToolButton>
#include <QTreeView>
#include <QTreeWidget>

using namespace mirn::zelchip;
using namespace mirn::zelchipview;

namespace {

enum Opened { Drawing, Project };

// The window with what a person does with it.
class UsedWindow : public ShownWindow
{
public:
    UsedWindow() = default;
    // Opens the small drawing, or the project with it.
    explicit UsedWindow(Opened opened)
    {
        show(opened == Project ? files.project.path() : files.write("small.svg", smallDrawing()));
    }
    ~UsedWindow() { window.reset(); } // before its files go

    HostFiles files;

    QToolBar* toolBar() { return window->findChild<QToolBar*>("tools"); }

    QAction* action(const QString& text)
    {
        for (QAction* action : window->findChildren<QAction*>() + toolBar()->actions()) {
            if (action->text().remove('&') == text)
                return action;
        }
        qFatal("no action %s", qPrintable(text));
    }

    void pointAt(QPointF scenePosition)
    {
        zeltest::sendMouse(
            view()->viewport(), QEvent::MouseMove, view()->mapFromScene(scenePosition), Qt::NoButton, Qt::NoButton);
    }

    void zoomWithWheel(QPoint position, int steps)
    {
        zeltest::turnWheel(view()->viewport(), position, QPoint(0, 120 * steps), Qt::ControlModifier);
        QCoreApplication::processEvents();
    }

    int elements() { return qobject_cast<ZelGraphicsScene*>(view()->scene())->elementCount(); }
    QPointF sceneAt(QPointF position) { return view()->viewportTransform().inverted().map(position); }

    // The drawing is all to be seen, and takes up the view in one direction.
    bool isFitted()
    {
        if (view()->horizontalScrollBar()->isVisible() || view()->verticalScrollBar()->isVisible())
            return false;
        const QSizeF room = view()->viewport()->size();
        const QRectF shown = view()->viewportTransform().mapRect(view()->sceneRect());
        const bool isInside = QRectF(QPointF(), room).contains(shown);
        return isInside && (shown.width() > 0.93 * room.width() || shown.height() > 0.93 * room.height());
    }
};

constexpr int Many = 20'000;

QByteArray largeDrawing()
{
    return "<svg width='100' height='100'>" + QByteArray("<rect width='1' height='1'/>\n").repeated(Many) + "</svg>";
}

// Someone who watches the progress of loading, which shows at once while this exists, and cancels it when it has come
// to a text and a value.
class Watcher
{
public:
    explicit Watcher(const QString& word = QString(), int value = 0)
    {
        LoadProgress::setPace({0, 0});
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, word, value] {
            auto* dialog = qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
            m_texts.append(dialog ? dialog->labelText() : QString());
            auto* cancel = dialog ? dialog->findChild<QPushButton*>() : nullptr;
            if (cancel && !word.isEmpty() && dialog->labelText().startsWith(word) && dialog->value() >= value)
                cancel->click();
        });
        m_timer.start(0);
    }

    ~Watcher() { LoadProgress::setPace({}); }

    [[nodiscard]] bool hasSeen(const QString& word) const { return !m_texts.filter(word).isEmpty(); }

private:
    QTimer m_timer;
    QStringList m_texts;
};

} // namespace

class TestMainWindow : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void importsTables()
    {
        UsedWindow used(Drawing);
        const QString made = used.files.path("made");
        used.action("Import Tables...")->trigger();
        auto* dialog = used.window->findChild<QDialog*>("importDialog");
        QVERIFY(dialog);
        const auto enter
            = [dialog](const char* field, const QString& text) { dialog->findChild<QLineEdit*>(field)->setText(text); };
        auto* start = dialog->findChild<QPushButton*>("importStart");
        QVERIFY(!start->isEnabled());
        enter("importProject", made);
        enter("importSites", used.files.write("bad.csv", "name\n"));
        start->click();
        auto* message = dialog->findChild<QLabel*>("importMessage");
        QTRY_VERIFY(message->text().contains("bad.csv:1: there is no column"));
        enter("importSites", used.files.write("sites.csv", "name,kind,x,y,width,height\na,PAD,0,0,1,1\n"));
        start->click();
        QTRY_COMPARE(used.window->windowTitle().contains("made"), true);
        QCOMPARE(used.elements() > 1, true);
    }

    void writesNumbers()
    {
        QCOMPARE(positionText({12.34, 56.0}), "12.3, 56.0");
        QCOMPARE(positionText({-0.04, -3.21}), "0.0, -3.2"); // no negative zero
        QCOMPARE(magnificationText(1.0), "1x"); // no zeros behind the point
        QCOMPARE(magnificationText(2.4414), "2.44x");
        QCOMPARE(magnificationText(12345.6), "12346x"); // no exponent
        QCOMPARE(magnificationText(1e-20), "0x");
        QCOMPARE(magnificationText(0.0512), "0.0512x");
    }

    void namesTheElementBelowThePointer()
    {
        const std::pair<QPointF, const char*> places[] = {
            {{12, 12}, "Channel 0  (id 11)"}, // the tooltip's first line
            {{14.5, 33}, "Channel 0  (id 11)"}, // below a text
            {{40, 17}, "Channel 0  (id 11)"}, // below an element of a hidden layer
            {{80, 30}, "wedge"}, // the name without a tooltip, no made-up id
            {{130, 30}, "Rectangle"}, // the kind without a name
            {{100, 80}, "Line  (id 14)"}, // where there is nothing else
            {{180, 30}, "small.svg: 6 elements"},
        };
        UsedWindow shown(Drawing);
        for (const auto& [position, element] : places) {
            shown.pointAt(position);
            QCOMPARE(shown.label("element"), element);
            const QStringList coordinates = shown.label("position").split(", ");
            QVERIFY(qAbs(coordinates.value(0).toDouble() - position.x()) < 1.0);
            QVERIFY(qAbs(coordinates.value(1).toDouble() - position.y()) < 1.0);
        }
        shown.pointAt({12, 12});
        QEvent leave(QEvent::Leave);
        QApplication::sendEvent(shown.view()->viewport(), &leave);
        QCOMPARE(shown.label("element"), "small.svg: 6 elements");
        QCOMPARE(shown.label("position"), QString());
    }

    // Scrolling changes the element below a pointer at rest, which the status bar then names.
    void followsTheMagnification()
    {
        UsedWindow shown(Drawing);
        const auto expected = [&shown] { return magnificationText(shown.view()->transform().m11()); };
        QTRY_COMPARE(shown.label("magnification"), expected());
        const QString fitted = shown.label("magnification");
        shown.zoomWithWheel(shown.view()->mapFromScene(130, 30), 8);
        QTRY_COMPARE(shown.label("magnification"), expected());
        QVERIFY(shown.label("magnification") != fitted);

        shown.view()->centerOn(170, 65);
        shown.pointAt({170, 65});
        QCOMPARE(shown.label("element"), "small.svg: 6 elements");
        shown.view()->centerOn(130, 30);
        QTRY_COMPARE(shown.label("element"), "Rectangle");
    }

    void fitsUntilTheUserZooms()
    {
        UsedWindow shown(Project);
        QTRY_VERIFY(shown.isFitted());
        shown.window->resize(1200, 500);
        QTRY_VERIFY(shown.isFitted());

        for (int step = 0; step < 5; ++step)
            shown.action("Zoom In")->trigger();
        const QTransform zoomed = shown.view()->transform();
        const QSize before = shown.view()->viewport()->size();
        shown.window->resize(1000, 700);
        QTRY_VERIFY(shown.view()->viewport()->size() != before);
        QCoreApplication::processEvents();
        QCOMPARE(shown.view()->transform(), zoomed);

        QVERIFY(shown.view()->horizontalScrollBar()->isVisible());
        shown.action("Fit Drawing")->trigger();
        QVERIFY(shown.isFitted()); // at once: nothing moves a second time
    }

    void zoomsAtThePointer()
    {
        UsedWindow shown(Drawing);
        QTRY_VERIFY(shown.isFitted());
        const QPoint pointer(150, 220);
        const QPointF below = shown.sceneAt(pointer);
        // After the first there is more than the view shows in both directions.
        for (int steps : {5, 1, 1, 1, 1, 2, 1, -1, -1, -1, -1}) {
            shown.zoomWithWheel(pointer, steps);
            const QPointF drift = (shown.sceneAt(pointer) - below) * shown.view()->transform().m11();
            QVERIFY2(drift.manhattanLength() < 1.5, qPrintable(QString::number(drift.manhattanLength())));
        }
    }

    // A drag shows the rectangle that was dragged, whatever lies in it; a click zooms in there.
    void zoomsToTheDraggedArea()
    {
        UsedWindow shown(Drawing);
        QTRY_VERIFY(shown.isFitted());
        QWidget* viewport = shown.view()->viewport();
        shown.action("Zoom Area")->trigger();
        shown.zoomWithWheel({150, 120}, 5); // there is more than the view shows
        const QPointF clicked = shown.sceneAt({150, 120});
        const double before = shown.view()->transform().m11();
        QTest::mouseClick(viewport, Qt::LeftButton, {}, {150, 120});
        QVERIFY(shown.view()->transform().m11() < 2 * before && shown.view()->transform().m11() > before);
        QVERIFY((shown.view()->viewportTransform().map(clicked) - QPointF(150, 120)).manhattanLength() < 2);
        for (const QSize& size : {QSize(120, 60), QSize(20, 10), QSize(12, 12)}) {
            const QRectF area = shown.view()->mapToScene(QRect({100, 80}, size)).boundingRect();
            QTest::mousePress(viewport, Qt::LeftButton, {}, {100, 80});
            QTest::mouseMove(viewport, QPoint(100, 80) + QPoint(size.width(), size.height()));
            QTest::mouseRelease(viewport, Qt::LeftButton, {}, QPoint(100, 80) + QPoint(size.width(), size.height()));
            const QRectF seen = shown.view()->mapToScene(viewport->rect()).boundingRect();
            QVERIFY(seen.adjusted(-1, -1, 1, 1).contains(area));
            const double factor = shown.view()->transform().m11();
            shown.view()->zoomOut();
            QVERIFY(shown.view()->transform().m11() < factor); // never beyond the limits
        }
        const QTransform last = shown.view()->viewportTransform();
        QTest::mousePress(viewport, Qt::LeftButton, {}, {10, 10});
        QTest::mouseMove(viewport, {200, 200});
        QApplication::setActiveWindow(shown.window.get());
        QTest::keyClick(shown.window.get(), Qt::Key_Escape); // leaves the mode; the rectangle comes to nothing
        QVERIFY(!shown.view()->findChild<QRubberBand*>()->isVisible());
        QTest::mouseRelease(viewport, Qt::LeftButton, {}, {200, 200});
        QCOMPARE(shown.view()->viewportTransform(), last);
        QVERIFY(ZELChipViewDatabase::getInstance()->selectedIds().isEmpty());
    }

    void earlierViewsComeBack()
    {
        UsedWindow shown(Drawing);
        QTRY_VERIFY(shown.isFitted());
        const auto seen = [&shown] { return shown.view()->viewportTransform(); };
        const QTransform fitted = seen();
        shown.zoomWithWheel({150, 120}, 5);
        const QTransform near = seen();
        shown.view()->horizontalScrollBar()->triggerAction(QAbstractSlider::SliderPageStepAdd);
        QTest::qWait(600); // a view that rests for a moment is remembered
        for (int step = 0; step < 2; ++step) { // there is only one to go back to
            shown.action("Previous View")->trigger();
            QCOMPARE(shown.view()->transform().m11(), fitted.m11());
            QVERIFY(std::abs(seen().dx() - fitted.dx()) <= 1 && std::abs(seen().dy() - fitted.dy()) <= 1);
        }
        shown.action("Next View")->trigger();
        QCOMPARE(shown.view()->transform().m11(), near.m11());
        QVERIFY(seen() != near && shown.view()->currentScale() > 1);
    }

    void middleButtonPansInEveryMode()
    {
        UsedWindow shown(Drawing);
        for (int step = 0; step < 5; ++step)
            shown.action("Zoom In")->trigger();
        for (const char* mode : {"Select", "Zoom Area", "Pan"}) {
            shown.action(mode)->trigger();
            const QPointF held = shown.sceneAt({150, 120});
            QTest::mousePress(shown.view()->viewport(), Qt::MiddleButton, {}, {150, 120});
            zeltest::sendMouse(shown.view()->viewport(), QEvent::MouseMove, {130, 100}, Qt::NoButton, Qt::MiddleButton);
            QTest::mouseRelease(shown.view()->viewport(), Qt::MiddleButton, {}, {130, 100});
            QVERIFY((shown.sceneAt({130, 100}) - held).manhattanLength() < 0.1);
        }
        const int column = shown.view()->horizontalScrollBar()->value();
        zeltest::turnWheel(shown.view()->viewport(), {150, 120}, {0, -120}, Qt::ShiftModifier);
        QVERIFY(shown.view()->horizontalScrollBar()->value() > column);
    }

    void zoomsToTheSelection()
    {
        UsedWindow shown(Drawing);
        shown.action("Zoom to Selection")->trigger();
        QCOMPARE(shown.window->statusBar()->currentMessage(), "No element is selected.");

        ZELChipViewDatabase::getInstance()->addSelctedItem(11, false);
        shown.action("Zoom to Selection")->trigger();
        const QRectF seen = shown.view()->mapToScene(shown.view()->viewport()->rect()).boundingRect();
        QVERIFY(seen.contains(QRectF(9.5, 9.5, 41, 41))); // clear of the edges and of scroll bars
        QVERIFY(seen.height() < 50);
    }

    void hasTheChipViewsActions()
    {
        UsedWindow shown(Project);
        const ZELChipViewDatabase* database = ZELChipViewDatabase::getInstance();
        for (int id : {ACTION_SELECT, ACTION_PAN, ACTION_ZOOM, ACTION_FILTER}) {
            QAction* action = database->getAction(id);
            QVERIFY(shown.toolBar()->actions().contains(action));
            QVERIFY(!action->icon().isNull());
            QVERIFY(action->isEnabled());
        }
        const auto* button
            = qobject_cast<QToolButton*>(shown.toolBar()->widgetForAction(database->getAction(ACTION_FILTER)));
        QCOMPARE(button->popupMode(), QToolButton::InstantPopup);
        QVERIFY(shown.action("View")->menu()->actions().contains(database->getAction(ACTION_FILTER)));

        QApplication::setActiveWindow(shown.window.get());
        const std::pair<Qt::Key, int> keys[]
            = {{Qt::Key_H, ACTION_PAN}, {Qt::Key_Escape, ACTION_PAN}, {Qt::Key_Z, ACTION_ZOOM},
                {Qt::Key_Escape, ACTION_SELECT}, {Qt::Key_Z, ACTION_ZOOM}, {Qt::Key_S, ACTION_SELECT}};
        for (const auto& [key, mode] : keys) {
            QTest::keyClick(shown.window.get(), key);
            QCOMPARE(database->getMouseMode(), mode);
        }
    }

    void snapshotGetsItsSuffix_data()
    {
        const Rows<QString, QString, QString> row; // typed, written, told
        row("none", "shot", "shot.png", "");
        row("another known one", "shot.bmp", "shot.bmp", "");
        row("an unknown one", "shot.doc", "", "'doc' is no known image format; use .png");
    }

    void snapshotGetsItsSuffix()
    {
        const auto [typed, written, told] = row<QString, QString, QString>();
        UsedWindow shown(Drawing);
        QTimer::singleShot(0, shown.window.get(), [&shown, typed = typed] {
            auto* dialog = qobject_cast<QFileDialog*>(QApplication::activeModalWidget());
            dialog->findChild<QLineEdit*>("fileNameEdit")->setText(shown.files.path(typed));
            QMetaObject::invokeMethod(dialog, "accept");
        });
        shown.action("Save Snapshot...")->trigger();
        const auto* box = shown.window->findChild<QMessageBox*>();
        QVERIFY2(box ? !told.isEmpty() && box->text().contains(told) : told.isEmpty(), qPrintable(typed));
        QVERIFY(!QFile::exists(shown.files.path("shot")) && !QFile::exists(shown.files.path("shot.doc")));
        if (!written.isEmpty())
            QVERIFY(!QImage(shown.files.path(written)).isNull());
    }

    void showsWarnings()
    {
        UsedWindow shown;
        shown.show(shown.files.write("odd.svg", drawingWithWarnings()));
        auto* button = shown.window->findChild<QToolButton*>("warnings");
        QVERIFY(button->isVisible());
        QCOMPARE(button->text(), "2 warnings");
        button->click();
        auto* box = shown.window->findChild<QMessageBox*>();
        QVERIFY(box && box->text().contains("gradient"));
        box->close();

        shown.window->open(shown.files.write("small.svg", smallDrawing()));
        QVERIFY(!button->isVisible());
        QVERIFY(!ZELChipViewDatabase::getInstance()->getAction(ACTION_FILTER)->isEnabled());
    }

    void opensOneAfterTheOther()
    {
        UsedWindow shown(Project);
        QCOMPARE(shown.window->windowTitle(), "Small/Test[*] \u2014 zelchip");
        const auto tools = shown.toolBar()->actions().size();
        const QString drawing = shown.files.write("other.svg", drawingWithWarnings());
        for (const QString& path : {drawing, shown.files.project.path(), drawing}) {
            shown.window->open(path);
            QCOMPARE(shown.toolBar()->actions().size(), tools);
            QCOMPARE(shown.window->findChildren<ZelChipGUI*>().size(), 1);
            QTRY_VERIFY(shown.isFitted());
        }
        QCOMPARE(shown.window->windowTitle(), "other.svg[*] \u2014 zelchip");
        QCOMPARE(shown.view()->sceneRect(), QRectF(0, 0, 100, 50));
        QCOMPARE(shown.label("element"), "other.svg: 1 element");
    }

    void keepsWhatIsOpenWhenTheNextIsRefused()
    {
        UsedWindow shown(Project);
        const ZelChipGUI* chipView = shown.chipView();
        shown.window->open(shown.files.write("<b>bad.svg", "bad"));
        auto* box = shown.window->findChild<QMessageBox*>();
        QVERIFY(box);
        QCOMPARE(box->textFormat(), Qt::PlainText);
        QVERIFY2(box->text().contains("<b>bad.svg:1:1: "), qPrintable(box->text()));
        QCOMPARE(shown.chipView(), chipView);
        QCOMPARE(shown.window->windowTitle(), "Small/Test[*] \u2014 zelchip");
        shown.pointAt({12, 12});
        QCOMPARE(shown.label("element"), "Channel 0  (id 11)");
    }

    void progressAppearsForLongLoadsOnly()
    {
        UsedWindow shown(Drawing);
        const Watcher watcher;
        shown.window->open(shown.files.write("large.svg", largeDrawing()));
        QVERIFY(watcher.hasSeen("Reading large.svg") && watcher.hasSeen("Building the view of large.svg"));
        QCOMPARE(shown.elements(), Many);
        QVERIFY(!QApplication::activeModalWidget());
        LoadProgress::setPace({});
        shown.window->open(shown.files.path("small.svg"));
        QCOMPARE(shown.elements(), 6);
        QVERIFY(!watcher.hasSeen("small.svg"));
    }

    void cancelledLoadLeavesWhatIsOpen()
    {
        // The load is cancelled while it reads, while items are made, while they are added.
        for (const auto& [word, value] :
            {std::pair("Reading", 0), std::pair("Building", 400), std::pair("Building", 800)}) {
            UsedWindow shown(Project);
            const QString title = shown.window->windowTitle();
            {
                const Watcher watcher(word, value);
                shown.window->open(shown.files.write("large.svg", largeDrawing()));
                QVERIFY(watcher.hasSeen(word));
            }
            QCOMPARE(shown.window->windowTitle(), title);
            QCOMPARE(shown.elements(), 6);
            QCOMPARE(shown.window->statusBar()->currentMessage(), "Opening large.svg was cancelled");
            QVERIFY(!QApplication::activeModalWidget());
            shown.window->open(shown.files.path("large.svg"));
            QCOMPARE(shown.elements(), Many);
            QVERIFY(shown.window->windowTitle().startsWith("large.svg"));
            QVERIFY(shown.window->close());
        }
    }

    void loadCancelledInACommandIsAnError()
    {
        UsedWindow shown(Drawing);
        shown.files.write("large.svg", largeDrawing());
        const QString script
            = shown.files.write("open.tcl", "zel_project open [file join [file dirname [info script]] large.svg]\n");
        const Watcher watcher("Building", 500);
        QString error;
        QVERIFY(!shown.window->runScript(script, &error));
        QVERIFY2(error.contains("Opening large.svg was cancelled"), qPrintable(error));
        QCOMPARE(shown.elements(), 6);
    }

    void loadCancelledAtTheStartLeavesASentence()
    {
        UsedWindow shown;
        {
            const Watcher watcher("Building", 500);
            const LoadProgress progress("large.svg", nullptr, LoadProgress::Cancelling::Possible);
            shown.show(shown.files.write("large.svg", largeDrawing()));
        }
        QCOMPARE(shown.elements(), 0);
        QVERIFY(shown.window->findChild<QLabel*>("sentence")->isVisible());
        shown.window->open(shown.files.write("small.svg", smallDrawing()));
        QCOMPARE(shown.elements(), 6);
        QVERIFY(!shown.window->findChild<QLabel*>("sentence"));
    }

    // The list is hidden until the click, follows the design, and Enter shows what a problem concerns.
    void problemsAreListedAndShown()
    {
        UsedWindow used;
        used.files.project.write("design.json", designWith(R"([{"name": "b", "type": "PLL"},
            {"name": "a", "type": "DCUCHANNEL", "site": "U0_CH0"}])"));
        used.show(used.files.project.path());
        auto* count = used.window->findChild<QToolButton*>("problems");
        auto* list = used.window->findChild<QTreeView*>("problemList");
        QCOMPARE(count->text(), "1 problem");
        QVERIFY(!list->isVisible());
        count->click();
        QVERIFY(list->isVisible());
        QCOMPARE(list->model()->index(0, 1).data().toString(), "top/b is not placed");
        used.run("zel_setting -id U0 -key CH0 -value OFF");
        QTRY_COMPARE(count->text(), "2 problems");
        QCOMPARE(list->parentWidget()->windowTitle(), "Problems (2)");
        list->setCurrentIndex(list->model()->index(0, 0));
        QTest::keyClick(list, Qt::Key_Return);
        QCOMPARE(used.tree()->currentItem(), used.row("top/a"));
        QVERIFY(ZELChipViewDatabase::getInstance()->selectedIds().ids().contains(11));
        used.run("undo; zel_resource remove -ip top/b");
        QTRY_COMPARE(list->model()->rowCount(), 0);
        QVERIFY(!count->isVisible());
    }

    // With the saved placement at first, then with that of another implementation, which is changed meanwhile.
    void placementsAreComparedAndShown()
    {
        UsedWindow used;
        used.files.project.write(
            "design.json", designWith(R"([{"name": "b", "type": "DCUCHANNEL", "site": "U0_CH0"}])"));
        used.files.project.write("project.json", QByteArray(R"({"name": "p", "device": "device.json",
            "design": "design.json", "implementations": [{"name": "one", "directory": "one"},
            {"name": "two", "directory": "two"}], "defaultImplementation": "one"})"));
        QVERIFY(QDir().mkpath(used.files.project.path() + "/two"));
        used.show(used.files.project.path());
        auto* list = used.window->findChild<QTreeWidget*>("differenceList");
        QMenu* menu = nullptr;
        for (QMenu* candidate : used.window->findChildren<QMenu*>())
            menu = candidate->title() == "&Compare Placement With" ? candidate : menu;
        const auto choose = [menu](const QString& text) {
            Q_EMIT menu->aboutToShow();
            for (QAction* action : menu->actions()) {
                if (action->text() == text && action->isEnabled())
                    action->trigger();
            }
        };
        choose("Implementation two"); // which has no placement yet
        QVERIFY(!list->isVisible());
        choose("The &Saved One");
        QVERIFY(list->isVisible() && list->topLevelItemCount() == 0);
        used.run("zel_resource place -rsc top/b -id 12");
        QTRY_COMPARE(list->topLevelItemCount(), 1);
        QCOMPARE(list->topLevelItem(0)->text(2) + list->topLevelItem(0)->text(3), "U0_CH0U0_CH1");
        list->setCurrentItem(list->topLevelItem(0));
        QCOMPARE(ZELChipViewDatabase::getInstance()->selectedIds().ids(), (QSet<int>{11, 12}));
        used.files.project.write("two/placement.tcl", "zel_resource reset -ip top/b\n");
        choose("Implementation two");
        QCOMPARE(list->topLevelItem(0)->text(2), "not placed");
        QCOMPARE(list->parentWidget()->windowTitle(), "Comparison (1)");
        used.files.project.write("two/placement.tcl", "zel_resource reset -ip top/x\n");
        used.run("zel_project refresh");
        QCOMPARE(list->topLevelItemCount(), 0);
        choose("The &Saved One");
        QCOMPARE(list->parentWidget()->windowTitle(), "Comparison (1)");
        list->parentWidget()->hide();
        used.run("undo");
        QTRY_COMPARE(list->parentWidget()->windowTitle(), "Comparison");
    }
};

ZEL_TEST_MAIN(TestMainWindow)
#include "tst_mainwindow.moc"
