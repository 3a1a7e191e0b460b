// SPDX-License-Identifier: MIT
#include "host/window/loadprogress.h"
#include "tests/host/hostfiles.h"
#include "tests/host/shownwindow.h"
#include "tests/support/rows.h"
#include "tests/support/testmain.h"

#include <QApplication>
#include <QLabel>
#include <QMessageBox>
#include <QProgressDialog>
#include <QPushButton>
#include <QStatusBar>
#include <QTimer>

using namespace mirn::zelchip;
using namespace mirn::zelchipview;

namespace {

constexpr int Many = 20'000;
constexpr LoadProgress::Pace AtOnce{0, 0};

QByteArray largeDrawing()
{
    return "<svg width='100' height='100'>" + QByteArray("<rect width='1' height='1'/>\n").repeated(Many) + "</svg>";
}

QProgressDialog* shownDialog()
{
    return qobject_cast<QProgressDialog*>(QApplication::activeModalWidget());
}

// Someone who watches the progress, and cancels it when it has come to this text and value.
class Watcher
{
public:
    explicit Watcher(const QString& word = QString(), int value = 0)
    {
        QObject::connect(&m_timer, &QTimer::timeout, &m_timer, [this, word, value] {
            QProgressDialog* dialog = shownDialog();
            texts.append(dialog ? dialog->labelText() : QString());
            auto* cancel = dialog ? dialog->findChild<QPushButton*>() : nullptr;
            if (cancel && !word.isEmpty() && dialog->labelText().startsWith(word) && dialog->value() >= value)
                cancel->click();
        });
        m_timer.start(0);
    }

    [[nodiscard]] bool hasSeen(const QString& word) const { return !texts.filter(word).isEmpty(); }

    QStringList texts;

private:
    QTimer m_timer;
};

int elementCount(MainWindow& window)
{
    auto* view = qobject_cast<ZelGraphicsView*>(window.findChild<ZelChipGUI*>()->centralWidget());
    return static_cast<int>(view->scene()->items().size());
}

} // namespace

class TestLoadProgress : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void init();
    void cleanup();
    void appearsForLongLoadsOnly();
    void cancelLeavesWhatIsOpen_data();
    void cancelLeavesWhatIsOpen();
    void cancelByACommandIsAnError();
    void cancelAtTheStartLeavesASentence();
};

void TestLoadProgress::init()
{
    Test::init();
    LoadProgress::setPace(AtOnce);
}

void TestLoadProgress::cleanup()
{
    LoadProgress::setPace({});
    Test::cleanup();
}

void TestLoadProgress::appearsForLongLoadsOnly()
{
    HostFiles files;
    MainWindow window(openSession(files.write("small.svg", smallDrawing())));
    window.show();
    {
        const Watcher watcher;
        window.open(files.write("large.svg", largeDrawing()));
        QVERIFY(watcher.hasSeen("Reading large.svg"));
        QVERIFY(watcher.hasSeen("Building the view of large.svg"));
    }
    QCOMPARE(elementCount(window), Many);
    QCOMPARE(shownDialog(), static_cast<QProgressDialog*>(nullptr));
    LoadProgress::setPace({});
    const Watcher watcher;
    window.open(files.path("small.svg"));
    QCOMPARE(elementCount(window), 6);
    QVERIFY(!watcher.hasSeen("small.svg"));
}

void TestLoadProgress::cancelLeavesWhatIsOpen_data()
{
    zeltest::addRows({
        {"while reading", "Reading", "0"},
        {"while items are made", "Building", "400"},
        {"while they are added", "Building", "800"},
    });
}

void TestLoadProgress::cancelLeavesWhatIsOpen()
{
    const auto [word, value] = zeltest::currentRow<2>();
    HostFiles files;
    MainWindow window(openSession(files.project.path()));
    window.show();
    const QString title = window.windowTitle();
    {
        const Watcher watcher(word, value.toInt());
        window.open(files.write("large.svg", largeDrawing()));
        QVERIFY(watcher.hasSeen(word));
    }
    QCOMPARE(window.windowTitle(), title);
    QCOMPARE(elementCount(window), 6);
    QCOMPARE(window.statusBar()->currentMessage(), "Opening large.svg was cancelled");
    QCOMPARE(QApplication::activeModalWidget(), static_cast<QWidget*>(nullptr));

    window.open(files.path("large.svg"));
    QCOMPARE(elementCount(window), Many);
    QVERIFY(window.windowTitle().startsWith("large.svg"));
    QVERIFY(window.close());
}

void TestLoadProgress::cancelByACommandIsAnError()
{
    HostFiles files;
    MainWindow window(openSession(files.write("small.svg", smallDrawing())));
    window.show();
    files.write("large.svg", largeDrawing());
    const QString script
        = files.write("open.tcl", "zel_project open [file join [file dirname [info script]] large.svg]\n");
    const Watcher watcher("Building", 500);
    QString error;
    QVERIFY(!window.runScript(script, &error));
    QVERIFY2(error.contains("Opening large.svg was cancelled"), qPrintable(error));
    QCOMPARE(elementCount(window), 6);
}

void TestLoadProgress::cancelAtTheStartLeavesASentence()
{
    HostFiles files;
    std::unique_ptr<ProjectSession> large = openSession(files.write("large.svg", largeDrawing()));
    std::unique_ptr<MainWindow> window;
    {
        const Watcher watcher("Building", 500);
        const LoadProgress progress("large.svg", nullptr, LoadProgress::Cancelling::Possible);
        window = std::make_unique<MainWindow>(std::move(large));
    }
    window->show();
    QCOMPARE(elementCount(*window), 0);
    QVERIFY(window->findChild<QLabel*>("sentence")->isVisible());
    window->open(files.write("small.svg", smallDrawing()));
    QCOMPARE(elementCount(*window), 6);
    QCOMPARE(window->findChild<QLabel*>("sentence"), static_cast<QLabel*>(nullptr));
}

ZEL_TEST_MAIN(TestLoadProgress)
#include "tst_loadprogress.moc"
