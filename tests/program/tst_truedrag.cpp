// SPDX-License-Identifier: MIT
#include "graphics/zelconstants.h"
#include "tests/program/sampleproject.h"
#include "tests/program/virtualscreen.h"
#include "tests/support/pixels.h"
#include "tests/support/testmain.h"

#include <QMap>
#include <QPoint>
#include <QTest>

namespace {

constexpr int StartMilliseconds = 30'000; // of patience, on a busy machine
constexpr int AnswerMilliseconds = 10'000;
constexpr int RestMilliseconds = 1'200; // three times as long as the view waits before it highlights
constexpr int StepPixels = 5; // of a hand that moves

// Sites of the sample by their element ids. PLL_TL0 is taken by a PLL that is fixed there.
constexpr int TakenPll = 5001001;
constexpr int FreePll = 5002001;
constexpr int OtherFreePll = 5004002; // in the corner across
constexpr int NearFreePll = 5004001; // in the corner below
constexpr int PlacedPll = 5003001; // beside it, with a PLL that may move
constexpr int FreeSupply = 4007001;
constexpr int OtherFreeSupply = 4003001;

const QByteArray Pll = "gateway/clocks/pll_video";
const QByteArray OtherPll = "gateway/clocks/pll_serdes";
const QByteArray Supply = "gateway/supplies/vccio_lvds";
const QByteArray OtherSupply = "gateway/supplies/vccio_ddr_b";

// Writes where everything is.
const char PositionsScript[] = R"(
cd [file dirname [info script]]
zel_tree expand
set out [open positions.part w]
foreach name {gateway/clocks/pll_video gateway/supplies/vccio_lvds gateway/supplies/vccio_ddr_b} {puts $out "$name [zel_tree where -rsc $name]"}
foreach id {5001001 5003001 5004001 5002001 5004002 4007001 4003001} {puts $out "$id [zel_view where -id $id]"}
close $out
file rename positions.part positions
)";

} // namespace

// The program on a screen, and a hand on the mouse.
class TestTrueDrag : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        const QString problem = m_screen.start();
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
        const QString script = m_project.write("positions.tcl", PositionsScript);
        m_program.setProcessEnvironment(m_screen.environment());
        m_program.setProcessChannelMode(QProcess::ForwardedChannels);
        endWithParent(m_program);
        m_program.start(ZELCHIP_PROGRAM, {m_project.path(), "--size", "1500x1100", "--script", script});
        QVERIFY2(m_program.waitForStarted(), qPrintable(m_program.errorString()));
        // The window manager makes it the active one last of all.
        QTRY_VERIFY_WITH_TIMEOUT(
            m_screen.xdotool({"getactivewindow", "getwindowname"}).contains("zelchip"), StartMilliseconds);
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_project.file("positions")), StartMilliseconds);
        for (const QByteArray& line : zeltest::contentOf(m_project.file("positions")).trimmed().split('\n')) {
            const QByteArrayList words = line.split(' ');
            m_positions.insert(words.value(0), {words.value(1).toInt(), words.value(2).toInt()});
        }
        QCOMPARE(m_positions.size(), 10);
        QVERIFY(!m_screen.picture().isNull());
        QCOMPARE(highlightAnywhere(), 0);
    }

    void cleanupTestCase()
    {
        m_program.kill();
        m_program.waitForFinished();
    }

    // A drag over an area shows it, and the key for the view before takes that back.
    void zoomsToTheDraggedArea()
    {
        m_screen.xdotool({"mousemove", QString::number(site(FreePll).x()), QString::number(site(FreePll).y())});
        m_screen.xdotool({"key", "z", "sleep", "1"});
        const QImage fitted = m_screen.picture();
        m_pointer = site(TakenPll) - QPoint(10, 8);
        m_screen.xdotool(
            {"mousemove", QString::number(m_pointer.x()), QString::number(m_pointer.y()), "mousedown", "1"});
        moveTo(site(TakenPll) + QPoint(10, 8));
        release();
        // The site alone fills the middle of the view now.
        const QRect middle((site(TakenPll) + site(OtherFreePll)) / 2 - QPoint(30, 30), QSize(60, 60));
        const QRgb color = fitted.pixel(site(TakenPll) - QPoint(8, 6));
        QTRY_VERIFY_WITH_TIMEOUT(zeltest::colorsIn(m_screen.picture(), middle).value(color) > 1000, AnswerMilliseconds);
        QTest::qWait(RestMilliseconds);
        m_screen.xdotool({"key", "alt+Left", "key", "s"});
        QTRY_VERIFY_WITH_TIMEOUT(m_screen.picture().copy(middle) == fitted.copy(middle), AnswerMilliseconds);
    }

    // The site under the pointer refuses the resource, or the drag is cancelled over a site that would take it.
    void dragWithoutADropChangesNothing()
    {
        for (const bool isCancelled : {false, true}) {
            const QRect beside(site(TakenPll) + QPoint(40, 75), QSize(60, 6));
            const QImage before = m_screen.picture().copy(beside);
            press(Pll);
            moveTo(site(TakenPll));
            if (isCancelled) {
                moveTo(site(FreePll));
                m_screen.xdotool({"key", "Escape"});
            }
            QTest::qWait(RestMilliseconds);
            QCOMPARE(highlightAnywhere(), 0);
            release();
            QCOMPARE(m_project.journal(), QByteArrayList());
            // The reason stays for a while.
            QCOMPARE(m_screen.picture().copy(beside) == before, isCancelled);
            QTRY_COMPARE_WITH_TIMEOUT(m_screen.picture().copy(beside), before, AnswerMilliseconds);
        }
    }

    void allowedSiteTakesTheResource()
    {
        press(Pll);
        moveTo(site(TakenPll));
        moveTo(site(FreePll) - QPoint(15, 0));
        QTest::qWait(100); // a hand that comes to the site first, and then rests on its label
        moveTo(site(FreePll));
        QTRY_VERIFY_WITH_TIMEOUT(highlightAt(OtherFreePll) > 0, AnswerMilliseconds);
        QCOMPARE(highlightAt(TakenPll), 0);
        QCOMPARE(m_project.journal(), QByteArrayList());
        release();
        const QByteArrayList placed{"zel_resource place -rsc " + Pll + " -id " + QByteArray::number(FreePll)};
        QTRY_COMPARE_WITH_TIMEOUT(m_project.journal(), placed, AnswerMilliseconds);
        QTRY_COMPARE_WITH_TIMEOUT(highlightAnywhere(), 0, AnswerMilliseconds);
    }

    // From site to site, once the site is selected. Escape leaves everything as it was.
    void resourceMovesInTheDrawing()
    {
        const QByteArrayList before = m_project.journal();
        m_screen.xdotool({"mousemove", QString::number(site(FreePll).x()), QString::number(site(FreePll).y())});
        m_screen.xdotool({"click", "1"});
        QTRY_VERIFY_WITH_TIMEOUT(selectionAt(FreePll) > 0, AnswerMilliseconds);
        const QRect target(site(NearFreePll) - QPoint(8, 8), QSize(16, 16));
        const QImage free = m_screen.picture().copy(target);
        for (const bool isCancelled : {true, false}) {
            QTest::qWait(RestMilliseconds); // else the press makes a double click
            press(QByteArray::number(FreePll));
            moveTo(site(NearFreePll));
            if (isCancelled) {
                QTRY_VERIFY_WITH_TIMEOUT(m_screen.picture().copy(target) != free, AnswerMilliseconds);
                m_screen.xdotool({"key", "Escape"});
            }
            release();
            QTRY_COMPARE_WITH_TIMEOUT(selectionAt(NearFreePll) > 0, !isCancelled, AnswerMilliseconds);
            QTRY_COMPARE_WITH_TIMEOUT(selectionAt(FreePll) > 0, isCancelled, AnswerMilliseconds);
            QTRY_COMPARE_WITH_TIMEOUT(
                m_project.journal(), isCancelled ? before : before + placedOn(NearFreePll), AnswerMilliseconds);
        }
    }

    // There and back again: with a question that Return answers, and without one.
    void resourcesSwapInTheDrawing()
    {
        for (const bool isAsked : {true, false}) {
            const int from = isAsked ? NearFreePll : PlacedPll;
            const int to = isAsked ? PlacedPll : NearFreePll;
            const QByteArrayList before = m_project.journal();
            QTest::qWait(RestMilliseconds);
            press(QByteArray::number(from));
            moveTo(site(to));
            if (!isAsked)
                m_screen.xdotool({"keydown", "shift"});
            release();
            QTest::qWait(RestMilliseconds);
            m_screen.xdotool(isAsked ? QStringList{"key", "Return"} : QStringList{"keyup", "shift"});
            const QByteArrayList swapped = before
                + QByteArrayList{"zel_resource reset -ip " + Pll, "zel_resource reset -ip " + OtherPll} + placedOn(to)
                + QByteArrayList{"zel_resource place -rsc " + OtherPll + " -id " + QByteArray::number(from)};
            QTRY_COMPARE_WITH_TIMEOUT(m_project.journal(), swapped, AnswerMilliseconds);
            QTRY_VERIFY_WITH_TIMEOUT(selectionAt(to) > 0, AnswerMilliseconds);
        }
    }

    // The button goes up as soon as the pointer is there: the text that comes up at a site must not take the drop.
    void quickDropIsNotLost()
    {
        press(Supply);
        moveTo(site(FreeSupply));
        release();
        const QByteArray placed = "zel_resource place -rsc " + Supply + " -id " + QByteArray::number(FreeSupply);
        QTRY_VERIFY_WITH_TIMEOUT(m_project.journal().contains(placed), AnswerMilliseconds);
    }

    // Neither the wheel nor the view's border ends the drag, and the drop goes where the pointer then is.
    void drawingMovesBelowTheDrag()
    {
        press(OtherSupply);
        moveTo(site(OtherFreeSupply));
        const QRect around(site(OtherFreeSupply) - QPoint(100, 100), QSize(200, 200));
        const QImage fitted = m_screen.picture().copy(around);
        m_screen.xdotool({"keydown", "ctrl", "click", "--repeat", "5", "4", "keyup", "ctrl"});
        QTRY_VERIFY_WITH_TIMEOUT(m_screen.picture().copy(around) != fitted, AnswerMilliseconds);
        QTest::qWait(RestMilliseconds);
        const QImage zoomed = m_screen.picture().copy(around);
        m_screen.xdotool({"click", "--repeat", "3", "5"});
        QTRY_VERIFY_WITH_TIMEOUT(m_screen.picture().copy(around) != zoomed, AnswerMilliseconds);
        m_screen.xdotool({"click", "--repeat", "3", "4"});
        QTRY_COMPARE_WITH_TIMEOUT(m_screen.picture().copy(around), zoomed, AnswerMilliseconds);
        release();
        const QByteArray placed
            = "zel_resource place -rsc " + OtherSupply + " -id " + QByteArray::number(OtherFreeSupply);
        QTRY_VERIFY_WITH_TIMEOUT(m_project.journal().contains(placed), AnswerMilliseconds);
    }

private:
    // Moves in small steps, with the pauses that a hand makes.
    void moveTo(QPoint target)
    {
        const QPoint way = target - m_pointer;
        const int steps = qMax(1, qMax(qAbs(way.x()), qAbs(way.y())) / StepPixels);
        QStringList words;
        for (int i = 1; i <= steps; ++i) {
            const QPoint at = m_pointer + way * i / steps;
            words += QStringList{"mousemove", QString::number(at.x()), QString::number(at.y()), "sleep", "0.004"};
        }
        m_screen.xdotool(words);
        m_pointer = target;
    }

    // On a resource's row, or on a site by its id.
    void press(const QByteArray& name)
    {
        m_pointer = m_positions.value(name);
        m_screen.xdotool(
            {"mousemove", QString::number(m_pointer.x()), QString::number(m_pointer.y()), "mousedown", "1"});
    }

    void release() { m_screen.xdotool({"mouseup", "1"}); }
    QPoint site(int id) const { return m_positions.value(QByteArray::number(id)); }

    static QByteArrayList placedOn(int id)
    {
        return {"zel_resource place -rsc " + Pll + " -id " + QByteArray::number(id)};
    }

    // How many pixels are in the colour of selected sites around a site's middle.
    int selectionAt(int id) const
    {
        const QRect around(site(id) - QPoint(8, 8), QSize(16, 16));
        return zeltest::colorsIn(m_screen.picture(), around).value(mirn::zelchipview::SELECTED_FILL_COLOR.rgb());
    }

    // How many pixels are in the colour of probable sites: at a site's middle and around it, or between the two sites
    // that lie in corners of the drawing.
    int highlightAt(int id) const { return highlightIn({site(id) - QPoint(8, 8), QSize(16, 16)}); }
    int highlightAnywhere() const { return highlightIn({site(TakenPll), site(OtherFreePll)}); }
    int highlightIn(const QRect& area) const
    {
        return zeltest::colorsIn(m_screen.picture(), area).value(mirn::zelchipview::HIGHLIGHT_COLOR.rgb());
    }

    VirtualScreen m_screen;
    SampleProject m_project;
    QProcess m_program;
    QMap<QByteArray, QPoint> m_positions;
    QPoint m_pointer;
};

ZEL_TEST_MAIN(TestTrueDrag)
#include "tst_truedrag.moc"
