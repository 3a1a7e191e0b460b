// SPDX-License-Identifier: MIT
#include "host/design/projectlock.h"
#include "tests/host/shownwindow.h"
#include "tests/program/batchprogram.h"
#include "tests/program/sampleproject.h"
#include "tests/support/testmain.h"

#include <QApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QStatusBar>
#include <QTest>
#include <QTimer>
#include <QToolBar>

namespace {

const QByteArray Video = "zel_resource place -rsc gateway/clocks/pll_video -id 5002001";
const QByteArray Xaui = "zel_resource place -rsc gateway/xaui -id 8002000";

// Carries out each line that it is sent.
const QByteArray Obey = "while {[gets stdin line] >= 0} {puts [catch $line said]; flush stdout}";

constexpr char Pll[] = "gateway/clocks/pll_video";

class SharedWindow : public ShownWindow
{
public:
    [[nodiscard]] QToolBar* bar() const { return window->findChild<QToolBar*>("notice"); }
    [[nodiscard]] QString notice() const { return bar()->isVisible() ? label("noticeText") : QString(); }
    [[nodiscard]] QPushButton* reload() const { return window->findChild<QPushButton*>("noticeButton"); }
    [[nodiscard]] bool isPlaced() const { return !row(Pll)->text(1).isEmpty(); }
};

// Presses the button of the next question, and closes whatever is asked or told after it. Collects what was told.
void answerQuestions(QMessageBox::StandardButton answer, QString* told)
{
    QTimer::singleShot(0, QApplication::instance(), [answer, told] {
        auto* box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        QTimer::singleShot(0, QApplication::instance(), [told] {
            if (auto* next = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
                *told = next->text() + ' ' + next->informativeText();
                next->close();
            }
        });
        box->button(answer)->click();
    });
}

} // namespace

// One project, and a window that is not alone with it.
class TestSharing : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void init()
    {
        zeltest::Test::init();
        m_project.forgetWork();
    }

    void windowHasItsProjectUntilItCloses()
    {
        SharedWindow shown;
        shown.show(m_project.path());
        QCOMPARE(shown.notice(), QString());
        const QString script = m_project.write("change.tcl", Video);
        const Outcome refused = run(ZELCHIP_PROGRAM, {m_project.path(), "--batch", script});
        QVERIFY2(refused.errors.contains(", process " + QByteArray::number(QCoreApplication::applicationPid()) + ')'),
            refused.errors.constData());
        shown.window.reset();
        QCOMPARE(run(ZELCHIP_PROGRAM, {m_project.path(), "--batch", script}).status, 0);
    }

    // What the other program has not saved is its own concern, so closing asks nothing.
    void secondWindowLooksUntilTheFirstProgramEnds()
    {
        BatchProgram first(m_project.path(), m_project.write("obey.tcl", Obey));
        first.send(Video);
        QCOMPARE(first.line(), "0");
        SharedWindow shown;
        shown.show(m_project.path());
        QVERIFY2(shown.notice().contains("process " + QString::number(first.id())), qPrintable(shown.notice()));
        shown.run(Xaui);
        QVERIFY(shown.window->statusBar()->currentMessage().contains("another program"));
        QVERIFY(shown.window->close());
        shown.show(m_project.path());
        first.kill();
        QTRY_COMPARE(shown.notice(), QString());
        shown.run(Xaui);
        QCOMPARE(m_project.journal().size(), 2);
        QVERIFY(shown.window->findChildren<QMessageBox*>().isEmpty());
    }

    void whatChangedBelowTheWindowIsReadAgain()
    {
        BatchProgram first(m_project.path(), m_project.write("obey.tcl", Obey));
        first.send(Xaui);
        QCOMPARE(first.line(), "0");
        SharedWindow shown;
        shown.show(m_project.path());
        QVERIFY(!shown.reload()->isVisible() && !shown.isPlaced());
        first.send(Video);
        QCOMPARE(first.line(), "0");
        QTRY_VERIFY(shown.reload()->isVisible());
        first.kill();
        shown.reload()->click();
        QTRY_COMPARE(shown.notice(), QString());
        QVERIFY(shown.isPlaced());
        shown.run("undo");
        QVERIFY(!shown.isPlaced());
    }

    // A file that replaces another, as most programs save, is watched as well.
    void everyReplacementIsSeen()
    {
        SharedWindow shown;
        shown.show(m_project.path());
        shown.run("zel_project save");
        const QString placement = m_project.file("project/impl1/placement.tcl");
        for (int n = 0; n < 2; ++n) {
            const QString other = m_project.write("project/impl1/other.tcl", n == 0 ? Video + '\n' : QByteArray());
            QVERIFY(QFile::remove(placement) && QFile::rename(other, placement));
            QTRY_VERIFY(shown.reload()->isVisible());
            shown.reload()->click();
            QTRY_COMPARE(shown.notice(), QString());
            QCOMPARE(shown.isPlaced(), n == 0);
        }
    }

    // Opening the same project again must not find its own lock in the way of a repair.
    void discardLeavesWhateverTheFilesSay()
    {
        SharedWindow shown;
        shown.show(m_project.path());
        shown.run("zel_project save");
        shown.run(Video);
        const QByteArray journal = zeltest::contentOf(m_project.journalFile());
        m_project.write("project/impl1/placement.tcl", Xaui + '\n');
        QTRY_VERIFY(shown.reload()->isVisible());
        QString told;
        answerQuestions(QMessageBox::Discard, &told);
        shown.reload()->click();
        QVERIFY2(told.contains("stays in " + m_project.journalFile()), qPrintable(told));
        QCOMPARE(zeltest::contentOf(m_project.journalFile() + ".aside-1"), journal);
        QCOMPARE(shown.notice(), QString());
        shown.run(Video);
        m_project.write("project/impl1/placement.tcl", "");
        answerQuestions(QMessageBox::Discard, &told);
        QVERIFY(shown.window->close());
        QCOMPARE(m_project.journal(), QByteArrayList{Video});
    }

    // The project that failed to open left nothing behind, and the present one takes further changes.
    void failedOpeningKeepsTheProject()
    {
        SharedWindow shown;
        shown.show(m_project.path());
        shown.run(Video);
        shown.run("zel_project open " + m_project.file("nowhere"));
        shown.run("undo");
        QCOMPARE(shown.notice(), QString());
        QCOMPARE(m_project.journal().size(), 2);
    }

    // Where the folder cannot be written, a lock stays when its program has long ended.
    void processNumberOfAnEndedProgramMayBeReused()
    {
        QProcess other;
        other.start("sleep", {"60"});
        QVERIFY(other.waitForStarted());
        QDir().mkpath(m_project.implementation());
        const QByteArray process = QByteArray::number(other.processId());
        const QString name = m_project.write("project/impl1/journal.tcl.lock", process + "\nzelchip\n\n\n\n");
        QVERIFY(!mirn::zelchip::ProjectLock(name).isOfAnother());
        m_project.write("project/impl1/journal.tcl.lock", process + "\nsleep\n\n\n\n");
        QVERIFY(mirn::zelchip::ProjectLock(name).isOfAnother());
        other.kill();
        other.waitForFinished();
    }

private:
    SampleProject m_project;
};

ZEL_TEST_MAIN(TestSharing)
#include "tst_sharing.moc"
