// SPDX-License-Identifier: MIT
#include "graphics/zelconstants.h"
#include "tests/program/sampleproject.h"
#include "tests/program/virtualscreen.h"
#include "tests/support/pixels.h"
#include "tests/support/testmain.h"

#include <QTest>

namespace {

constexpr int StartMilliseconds = 30'000; // of patience, on a busy machine
constexpr int AnswerMilliseconds = 10'000;

const QByteArray Placed = "zel_resource place -rsc gateway/clocks/pll_video -id 5002002"; // on PLL_TR1

// Writes where the site is on the screen when it is told that the window has come to its place.
const char PositionScript[] = R"(
cd [file dirname [info script]]
while {![file exists go]} {after 20}
after 300
set out [open position.part w]
puts $out [zel_view where -id 5002002]
close $out
file rename position.part position
)";

} // namespace

// The program on a screen, and hands on the keyboard only.
class TestTrueKeys : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void initTestCase()
    {
        const QString problem = m_screen.start();
        QVERIFY2(problem.isEmpty(), qPrintable(problem));
        const QString script = m_project.write("position.tcl", PositionScript);
        m_program.setProcessEnvironment(m_screen.environment());
        m_program.setProcessChannelMode(QProcess::ForwardedChannels);
        endWithParent(m_program);
        m_program.start(ZELCHIP_PROGRAM, {m_project.path(), "--size", "1500x1100", "--script", script});
        QVERIFY2(m_program.waitForStarted(), qPrintable(m_program.errorString()));
        QTRY_VERIFY_WITH_TIMEOUT(activeWindow().contains("zelchip"), StartMilliseconds);
        m_project.write("go", {});
        QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(m_project.file("position")), StartMilliseconds);
        const QByteArrayList words = zeltest::contentOf(m_project.file("position")).trimmed().split(' ');
        m_site = {words.value(0).toInt(), words.value(1).toInt()};
    }

    void cleanupTestCase()
    {
        m_program.kill();
        m_program.waitForFinished();
    }

    // Finds the resource, opens the menu of its row, and chooses among the sites.
    void keysPlaceAResource()
    {
        press({"ctrl+f"});
        type("video");
        press({"Return", "Down", "Menu"});
        QTest::qWait(300); // the menu has no name to wait for
        press({"Down", "Return"});
        QTRY_VERIFY_WITH_TIMEOUT(activeWindow().contains("pll_video"), AnswerMilliseconds);
        QCOMPARE(highlightAtSite(), 0);
        type("tr1");
        QTRY_VERIFY_WITH_TIMEOUT(highlightAtSite() > 0, AnswerMilliseconds);
        QCOMPARE(m_project.journal(), QByteArrayList());
        press({"Return"});
        QTRY_COMPARE_WITH_TIMEOUT(m_project.journal(), QByteArrayList{Placed}, AnswerMilliseconds);
        QTRY_VERIFY_WITH_TIMEOUT(activeWindow().contains("zelchip"), AnswerMilliseconds);
        QTRY_COMPARE_WITH_TIMEOUT(highlightAtSite(), 0, AnswerMilliseconds);
    }

    // From the tree through table, drawing and output to the console.
    void tabComesToTheConsole()
    {
        press({"Tab", "Tab", "Tab", "Tab"});
        type("zel_resource reset -ip gateway/clocks/pll_video");
        press({"Return"});
        QTRY_COMPARE_WITH_TIMEOUT(m_project.journal().size(), 2, AnswerMilliseconds);
    }

private:
    void press(const QStringList& keys) { m_screen.xdotool(QStringList{"key", "--delay", "60"} + keys); }
    void type(const QString& text) { m_screen.xdotool({"type", "--delay", "30", text}); }
    QString activeWindow() const { return m_screen.xdotool({"getactivewindow", "getwindowname"}); }

    // How many pixels of the site are in the colour of probable sites.
    int highlightAtSite() const
    {
        return zeltest::colorsIn(m_screen.picture(), {m_site - QPoint(8, 8), QSize(16, 16)})
            .value(mirn::zelchipview::HIGHLIGHT_COLOR.rgb());
    }

    VirtualScreen m_screen;
    SampleProject m_project;
    QProcess m_program;
    QPoint m_site;
};

ZEL_TEST_MAIN(TestTrueKeys)
#include "tst_truekeys.moc"
