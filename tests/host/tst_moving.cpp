// SPDX-License-Identifier: MIT
#include "graphics/elements/elementidset.h"
#include "tests/host/hostfiles.h"
#include "tests/host/shownwindow.h"
#include "tests/support/events.h"
#include "tests/support/pixels.h"
#include "tests/support/testmain.h"

#include <QAction>
#include <QHelpEvent>
#include <QMenu>
#include <QRegularExpression>
#include <QRubberBand>
#include <QStatusBar>
#include <QToolTip>

using namespace mirn::zelchip;
using namespace mirn::zelchipview;

namespace {

const QByteArray Design = R"([
  {"name": "duo", "type": "IP", "children": [
    {"name": "a", "type": "DCUCHANNEL", "site": "U0_CH0"}, {"name": "b", "type": "DCUCHANNEL", "site": "U0_CH1"},
    {"name": "ref", "type": "EXTREF", "site": "REF_L", "fixed": true}]},
  {"name": "mono", "type": "IP", "children": [{"name": "a", "type": "DCUCHANNEL", "site": "U1_CH0"}]},
  {"name": "far", "type": "IP", "children": [{"name": "a", "type": "DCUCHANNEL", "site": "U2_CH0"}]},
  {"name": "core", "type": "PLL"}
])";

// The middles of the sites, and of what is free of them in a unit.
const QMap<QString, QPoint> Places{{"U0", {100, 80}}, {"U0_CH0", {50, 30}}, {"U0_CH1", {140, 30}}, {"U1", {300, 80}},
    {"U1_CH0", {250, 30}}, {"U1_CH1", {340, 30}}, {"U2_CH0", {50, 130}}, {"REF_L", {140, 130}},
    {"PLL_CORE", {250, 130}}};

enum class Answer { None, Yes, No, Shift };

// The program's window on a project whose drawing has its sites.
class Moving : public ShownWindow
{
public:
    Moving()
    {
        files.project.write("small.svg", zeltest::dataFile("host/drawings/sites.svg"));
        show(files.project.path(), QSize(1100, 800));
        run("zel_view candidates 0; zel_view connections off");
    }
    ~Moving() { window.reset(); } // before its files go

    [[nodiscard]] QWidget* viewport() const { return view()->viewport(); }
    [[nodiscard]] QPoint at(const QString& site) const { return view()->mapFromScene(QPointF(Places.value(site))); }
    [[nodiscard]] QString message() const { return window->statusBar()->currentMessage(); }
    [[nodiscard]] QString note() const
    {
        const auto* label = window->findChild<QLabel*>("pointerNote");
        return label->isVisible() ? label->text() : QString();
    }
    [[nodiscard]] QString selected() const
    {
        QStringList ids;
        for (int id : ZELChipViewDatabase::getInstance()->selectedIds().ids())
            ids.append(QString::number(id));
        ids.sort();
        return ids.join(' ');
    }
    [[nodiscard]] QStringList journal() const
    {
        return QString(zeltest::contentOf(files.project.path() + "/deux/journal.tcl"))
            .split('\n', Qt::SkipEmptyParts)
            .mid(1);
    }

    // The button goes down on a site, moves to another and goes up there; what the press began is over at once, because
    // no drag can be held without a screen. Returns whether a rubber band was seen.
    bool dragByMouse(const QString& from, const QString& to)
    {
        const auto* band = view()->findChild<QRubberBand*>();
        zeltest::sendMouse(viewport(), QEvent::MouseButtonPress, at(from), Qt::LeftButton, Qt::LeftButton);
        zeltest::sendMouse(viewport(), QEvent::MouseMove, at(to), Qt::NoButton, Qt::LeftButton);
        const bool hasBand = band->isVisible();
        zeltest::sendMouse(viewport(), QEvent::MouseButtonRelease, at(to), Qt::LeftButton, Qt::NoButton);
        return hasBand;
    }

    // Takes the resource of the selected row to a site.
    void dragTo(const QString& site)
    {
        zeltest::drag<QDragEnterEvent>(viewport(), at(site));
        zeltest::drag<QDragMoveEvent>(viewport(), at(site));
    }

    void drop(const QString& site, Answer answer)
    {
        const QMimeData data;
        QDropEvent event(at(site), Qt::CopyAction | Qt::MoveAction, &data, Qt::LeftButton,
            answer == Answer::Shift ? Qt::ShiftModifier : Qt::NoModifier);
        QApplication::sendEvent(viewport(), &event);
        if (answer != Answer::Yes && answer != Answer::No)
            return;
        QMenu* question = nullptr;
        QTRY_VERIFY((question = window->findChild<QMenu*>("swapQuestion")));
        QTest::keyClick(question, answer == Answer::Yes ? Qt::Key_Return : Qt::Key_Escape);
    }

    [[nodiscard]] QImage picture() { return view()->grab().toImage(); }

    HostFiles files{Design};
};

} // namespace

// Moving resources by hand, and what the drawing shows for it.
class TestMoving : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void pressBeginsADragOrABand_data()
    {
        const Rows<QString, QString, QString, bool, QString> row; // mode, selected, pressed, band, selected afterwards
        row("a selected site with a resource is dragged", "select", "11", "U0_CH0", false, "11");
        row("one of several as well", "select", "11 21", "U0_CH0", false, "11 21");
        row("on another site there is a band", "select", "11", "U0_CH1", true, "12 22");
        row("on a selected site without one", "select", "22", "U1_CH1", true, "22");
        row("in another mode there is none to drag", "zoom", "11", "U0_CH0", true, "");
        row("what is fixed stays", "select", "40", "REF_L", false, "40");
        row("what is locked as well", "select", "31", "U2_CH0", false, "31");
    }

    void pressBeginsADragOrABand()
    {
        const auto [mode, selected, pressed, hasBand, after] = row<QString, QString, QString, bool, QString>();
        Moving moving;
        moving.run("zel_resource lock -ip top/far/a");
        moving.run("zel_view select " + selected);
        moving.run("zel_view mode " + mode);
        QCOMPARE(moving.dragByMouse(pressed, "U1_CH1"), hasBand);
        if (mode == "select" && !hasBand)
            QCOMPARE(moving.selected(), after);
        else if (mode == "select")
            QVERIFY(moving.selected().contains(after.section(' ', -1)));
        QCOMPARE(moving.journal(), QStringList("zel_resource lock -ip top/far/a"));
        const QMap<QString, QString> reasons{
            {"REF_L", "top/duo/ref is fixed on REF_L"}, {"U2_CH0", "top/far/a is locked on U2_CH0; unlock it first"}};
        QCOMPARE(moving.message(), reasons.value(pressed));
        QCOMPARE(moving.note(), moving.message());
    }

    // A press that becomes no drag is a click as on every other element.
    void clickOnASelectedSiteSelectsIt()
    {
        Moving moving;
        moving.run("zel_view select 11 12 22");
        QTest::mouseClick(moving.viewport(), Qt::LeftButton, {}, moving.at("U0_CH0"));
        QCOMPARE(moving.selected(), "11");
        QVERIFY(moving.row("top/duo/a")->isSelected());
    }

    void dropDoesWhatTheStatusBarSays_data()
    {
        // The row, the site, what is said meanwhile, the answer to a question, and the journal.
        const Rows<QString, QString, QString, Answer, QStringList> row;
        const QString swap = "zel_resource swap -rsc {top/duo/a} -with {top/mono/a}";
        const QStringList swapped{"# together 4", "zel_resource reset -ip top/duo/a",
            "zel_resource reset -ip top/mono/a", "zel_resource place -rsc top/duo/a -id 21",
            "zel_resource place -rsc top/mono/a -id 11"};
        row("a free site", "top/duo/a", "U1_CH1", "zel_resource place -rsc {top/duo/a} -id 22", Answer::None,
            {"zel_resource place -rsc top/duo/a -id 22"});
        row("an unplaced resource", "top/core", "PLL_CORE", "zel_resource place -rsc {top/core} -id 50", Answer::None,
            {"zel_resource place -rsc top/core -id 50"});
        row("an IP", "top/mono", "U1", "top/mono is already on U1", Answer::None, {});
        row("a swap", "top/duo/a", "U1_CH0", swap, Answer::Yes, swapped);
        row("a swap without a question", "top/duo/a", "U1_CH0", swap, Answer::Shift, swapped);
        row("no swap after all", "top/duo/a", "U1_CH0", swap, Answer::No, {});
        row("a swap against the rules", "top/duo/a", "U2_CH0", "top/duo/b is in U0, which is not next to U2",
            Answer::None, {});
        row("a swap with what is fixed", "top/mono/a", "REF_L", "top/duo/ref is fixed on REF_L", Answer::Shift, {});
        row("an occupied site for an unplaced resource", "top/core", "U0_CH0",
            "U0_CH0 (Channel) does not take resources of type PLL", Answer::Shift, {});
    }

    void dropDoesWhatTheStatusBarSays()
    {
        const auto [resource, site, message, answer, journal] = row<QString, QString, QString, Answer, QStringList>();
        Moving moving;
        moving.tree()->setCurrentItem(moving.row(resource));
        moving.dragTo(site);
        QCOMPARE(moving.message(), message);
        QCOMPARE(moving.note(), message.startsWith("zel_") ? QString() : message);
        moving.drop(site, answer);
        QTRY_COMPARE(moving.journal(), journal);
        QCOMPARE(moving.editor().undoStack().count(), journal.isEmpty() ? 0 : 1);
        if (journal.size() < 2)
            return;
        QVERIFY(moving.editor().undo().isEmpty());
        const auto& design = moving.editor().engine().design();
        QCOMPARE(design.resource(design.occupant(11)).path, "top/duo/a");
        QCOMPARE(design.resource(design.occupant(21)).path, "top/mono/a");
    }

    // All sites that an IP would take are marked, and nothing stays marked after the drag.
    void ghostsShowWhereEverythingGoes()
    {
        Moving moving;
        moving.run("zel_resource reset -ip top/duo/a; zel_resource reset -ip top/duo/b; zel_view names 0");
        moving.tree()->setCurrentItem(moving.row("top/duo"));
        const QImage before = moving.picture();
        const auto changedAt = [&](const QString& site) {
            const QRect area(moving.at(site) - QPoint(20, 20), QSize(40, 40));
            return moving.picture().copy(area) != before.copy(area);
        };
        moving.dragTo("U0");
        QVERIFY(changedAt("U0_CH0") && changedAt("U0_CH1") && !changedAt("U1_CH1"));
        moving.dragTo("U1"); // it has one free channel, the other comes from its neighbour
        QVERIFY(changedAt("U0_CH0") && !changedAt("U0_CH1") && changedAt("U1_CH1"));
        zeltest::leaveDrag(moving.viewport());
        QVERIFY(!changedAt("U0_CH0") && !changedAt("U1_CH1"));
    }

    // Names come and go with their switch and the design, and can be read on every fill.
    void namesStandOnOccupiedSites()
    {
        Moving moving;
        moving.run("zel_view names 0");
        const QImage without = moving.picture();
        moving.run("zel_view names 1");
        const QImage with = moving.picture();
        for (auto place = Places.begin(); place != Places.end(); ++place) {
            const bool isOccupied = !place.key().contains(QRegularExpression("^(U0|U1|U1_CH1|PLL_CORE)$"));
            const QRect area(moving.at(place.key()) - QPoint(30, 10), QSize(60, 20));
            QVERIFY2((with.copy(area) != without.copy(area)) == isOccupied, qPrintable(place.key()));
        }
        moving.run("zel_resource reset -ip top/mono/a");
        const QRect area(moving.at("U1_CH0") - QPoint(30, 10), QSize(60, 20));
        QTRY_VERIFY(zeltest::colorsIn(moving.picture(), area).size() == 1);
        moving.view()->scale(0.1, 0.1);
        const QImage small = moving.picture();
        moving.run("zel_view names 0");
        QCOMPARE(moving.picture(), small); // there is room for none
    }

    void legendExplainsWhatIsPainted_data()
    {
        const Rows<QString, QString, QString> row; // commands, the selected row, the entries beside the lasting ones
        row("what has no place and no connections", "", "top/core", "candidate");
        row("what has connections", "", "top/duo/a", "connection");
        row("what has no place", "zel_resource reset -ip top/duo/a", "top/duo/a", "candidate|not placed");
        row("a broken rule", "zel_setting -id U0 -key CH1 -value OFF", "top/duo/b", "connection|broken");
        row("nothing", "zel_view connections off; zel_view candidates 0", "top/core", "");
    }

    void legendExplainsWhatIsPainted()
    {
        const auto [commands, resource, expected] = row<QString, QString, QString>();
        Moving moving;
        const auto* legend = moving.window->findChild<QWidget*>("legend");
        const auto entries = [legend] {
            QStringList words; // hidden where there is no room for them; the lasting ones are the older
            for (const QLabel* word : legend->findChildren<QLabel*>("words"))
                words.append(word->text());
            return words.mid(words.indexOf("conflicting") + 1).join('|');
        };
        moving.run("zel_view connections selected; zel_view candidates 1; " + commands);
        moving.tree()->setCurrentItem(moving.row(resource));
        QTRY_COMPARE(entries(), expected);
        moving.dragTo("U0");
        QVERIFY(!entries().contains("candidate")); // what is probable lights up instead
        zeltest::leaveDrag(moving.viewport());
        QTRY_COMPARE(entries(), expected);
    }

    void tooltipSaysWhatIsOnASite()
    {
        Moving moving;
        const auto tipAt = [&](const QString& site) {
            QHelpEvent event(QEvent::ToolTip, moving.at(site), moving.viewport()->mapToGlobal(moving.at(site)));
            QApplication::sendEvent(moving.viewport(), &event);
            return QToolTip::text().remove(QRegularExpression("<[^>]*>"));
        };
        const QString tip = tipAt("U0_CH0");
        QVERIFY2(
            tip.startsWith("Channel U0_CH0: top/duo/a") && tip.contains("Fed by top/duo/ref (REF_L)"), qPrintable(tip));
        QCOMPARE(tipAt("U1_CH1"), "Channel U1_CH1");
    }
};

ZEL_TEST_MAIN(TestMoving)
#include "tst_moving.moc"
