// SPDX-License-Identifier: MIT
#include "host/console/consolecolors.h"
#include "host/look/palettes.h"
#include "host/memory/windowmemory.h"
#include "host/memory/windowplace.h"
#include "host/memory/windowsettings.h"
#include "planning/overviewmap.h"
#include "tests/host/hostfiles.h"
#include "tests/host/shownwindow.h"
#include "tests/program/batchprogram.h"
#include "tests/support/testmain.h"

#include <QAction>
#include <QApplication>
#include <QMenu>
#include <QMessageBox>
#include <QScreen>
#include <QTest>

#include <sys/stat.h>

using namespace mirn::zelchip;

namespace {

// A window as a person uses it, who has closed it before.
class RememberedWindow : public ShownWindow
{
public:
    explicit RememberedWindow(const QString& path, const QString& settings, QSize size = {})
    {
        auto opened = openSession(path);
        session = opened.get();
        window = std::make_unique<MainWindow>(std::move(opened));
        window->memory().begin(std::make_unique<WindowSettings>(settings), size);
        window->show();
        QCoreApplication::processEvents();
    }

    [[nodiscard]] QDockWidget* dock(const char* name) const { return window->findChild<QDockWidget*>(name); }
    [[nodiscard]] QAction* overview() const { return window->findChild<QAction*>("overview"); }
    [[nodiscard]] QStringList recent() const
    {
        QStringList paths;
        for (const QMenu* menu : window->findChildren<QMenu*>()) {
            if (menu->title() != "Open &Recent")
                continue;
            for (const QAction* action : menu->actions())
                paths.append(action->toolTip());
        }
        return paths.mid(0, paths.size() - 2); // without the line and the action that clears the list
    }
};

} // namespace

// What the window remembers, and how it looks on the user's desktop.
class TestMemory : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void windowFitsItsScreen_data()
    {
        const Rows<QRect, QSize, bool> row; // what the desktop leaves, the window's size, whether it is maximized
        row("a large screen", QRect(0, 0, 2560, 1440), QSize(1600, 1000), false);
        row("a laptop", QRect(0, 0, 1366, 768), QSize(1350, 724), true);
        row("a low screen", QRect(0, 30, 1920, 900), QSize(1600, 856), false);
        row("a narrow screen", QRect(0, 0, 1200, 1900), QSize(1184, 1000), false);
    }

    void windowFitsItsScreen()
    {
        const auto [available, size, isMaximized] = row<QRect, QSize, bool>();
        const WindowPlace place = firstPlace({1600, 1000}, available);
        QCOMPARE(place.size, size);
        QCOMPARE(place.isMaximized, isMaximized);
        QVERIFY(available.contains(place.rect) || place.rect.isNull());
    }

    void windowComesBackWhereItCanBeSeen_data()
    {
        const Rows<QRect, QRect> row; // remembered, restored
        row("where it was", QRect(100, 50, 900, 600), QRect(100, 50, 900, 600));
        row("on the second screen", QRect(1500, 50, 900, 600), QRect(1500, 50, 900, 600));
        row("half off the screens", QRect(-500, 50, 900, 600), QRect(0, 50, 900, 600));
        row("larger than its screen", QRect(0, 40, 1500, 2000), QRect(0, 40, 1350, 724));
        row("off every screen", QRect(5000, 50, 900, 600), QRect());
        row("all but a corner off", QRect(-890, -590, 900, 600), QRect());
        row("nowhere", QRect(), QRect());
    }

    void windowComesBackWhereItCanBeSeen()
    {
        const auto [remembered, restored] = row<QRect, QRect>();
        QCOMPARE(restoredPlace(remembered, {{0, 0, 1366, 768}, {1366, 0, 1920, 1080}}).rect, restored);
    }

    void windowIsAsItWasLeft()
    {
        const HostFiles files;
        const QString settings = m_folder.filePath("left.ini");
        const QString drawing = files.project.path() + "/small.svg";
        QSize size;
        int width = 0;
        {
            RememberedWindow shown(drawing, settings, {700, 500});
            shown.console()->setHistory({"set answer 42"});
            shown.chipView()->resizeDocks({shown.dock("Placement")}, {250}, Qt::Horizontal);
            shown.console()->hide();
            shown.run("zel_view names 0");
            shown.overview()->setChecked(false);
            shown.window->findChild<QAction*>("connections-all")->trigger();
            shown.window->findChild<QAction*>("candidates")->trigger();
            QCoreApplication::processEvents();
            // From one project to the next the docks stay as well.
            width = shown.dock("Placement")->width();
            shown.window->open(files.project.path());
            QCOMPARE(shown.dock("Placement")->width(), width);
            size = shown.window->size();
            QVERIFY(shown.window->close());
        }
        RememberedWindow shown(files.project.path(), settings);
        QCOMPARE(shown.window->size(), size);
        QCOMPARE(shown.dock("Placement")->width(), width);
        QVERIFY(!shown.console()->isVisible() && !shown.overview()->isChecked());
        QVERIFY(!shown.window->findChild<mirn::zelchipview::OverviewMap*>()->isOn());
        QVERIFY(shown.window->findChild<QAction*>("connections-all")->isChecked());
        QVERIFY(!shown.window->findChild<QAction*>("connections-selected")->isChecked());
        QVERIFY(!shown.window->findChild<QAction*>("candidates")->isChecked());
        QCOMPARE(shown.console()->history(), QStringList("set answer 42"));
        QVERIFY(!shown.window->findChild<QAction*>("names")->isChecked());
        QCOMPARE(shown.recent(), QStringList({files.project.path(), drawing}));
        QFile::remove(drawing);
        shown.window->open(drawing);
        QCOMPARE(shown.recent(), QStringList(files.project.path()));
    }

    void damagedSettingsCountAsNone_data()
    {
        const Rows<QByteArray> row;
        row("noise", QByteArray("\x00\xff[[[\n=\n%%%\n[window]\nplace", 24));
        row("other types",
            "[window]\nplace=@Rect(1 2 3)\ndocks=7, 8\nmaximized=maybe\n[console]\nhistory=@Variant(\\0)\n"
            "[files]\nfolder=@ByteArray(x)\nrecent=@Size(1 1)\n[view]\noverview=7\n[chipview]\ndocks=@Invalid()\n");
        row("numbers beyond all bounds", "[window]\nplace=99999999999x1 -99999999999 7\n");
        row("a damaged arrangement",
            "[window]\ndocks=0123 AAAA/wAAAAD9f////w==\n[chipview]\ndocks=AAAA/wAAAAD9f////w==\n");
        row("far too large", QByteArray(2'000'000, 'x'));
    }

    void damagedSettingsCountAsNone()
    {
        const auto [content] = row<QByteArray>();
        const HostFiles files;
        const QString settings = zeltest::writeFile(m_folder.filePath("damaged.ini"), content);
        RememberedWindow shown(files.project.path(), settings);
        QVERIFY(shown.overview()->isChecked());
        QVERIFY(shown.console()->isVisible() && shown.window->screen()->geometry().contains(shown.window->geometry()));
        QVERIFY(shown.window->close());
    }

    // Opening a pipe would wait for ever.
    void settingsThatAreNoFileAreLeftAlone()
    {
        const QString pipe = m_folder.filePath("pipe.ini");
        QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        for (const QString& name : {pipe, m_folder.path()}) {
            WindowSettings settings(name);
            settings.setRecent({"/somewhere"});
            QCOMPARE(settings.recent(), QStringList());
        }
    }

    void onlyAPersonsWindowRemembers_data()
    {
        const Rows<QByteArray, bool> row; // arguments, whether the settings are written
        row("a window", "", true);
        row("a fresh window", "--fresh", false);
        row("a script in the window", "--script exit.tcl", false);
        row("a batch", "--batch exit.tcl", false);
        row("a snapshot", "--snapshot picture.png", false);
    }

    void onlyAPersonsWindowRemembers()
    {
        const auto [arguments, isWritten] = row<QByteArray, bool>();
        HostFiles files;
        files.write("exit.tcl", "exit\n");
        QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
        environment.insert("XDG_CONFIG_HOME", files.path("config"));
        QProcess program;
        program.setProcessEnvironment(environment);
        program.setWorkingDirectory(files.path("."));
        program.start(
            ZELCHIP_PROGRAM, QStringList(files.project.path()) + QString(arguments).split(' ', Qt::SkipEmptyParts));
        const QString settings = files.path("config/zelchip/zelchip.ini");
        if (isWritten)
            QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(settings), 20'000);
        else if (arguments == "--fresh")
            QTRY_VERIFY_WITH_TIMEOUT(QFile::exists(files.project.path() + "/deux/journal.tcl.lock"), 20'000);
        else
            QVERIFY(program.waitForFinished());
        program.terminate();
        QVERIFY(program.state() == QProcess::NotRunning || program.waitForFinished());
        QCOMPARE(QFile::exists(settings), isWritten);
    }

    // The drawing keeps its own colours, which are made for light paper.
    void darkPaletteMakesADarkWindow()
    {
        const HostFiles files;
        const QPalette before = QApplication::palette();
        QApplication::setPalette(darkPalette());
        ShownWindow shown;
        shown.show(files.project.path());
        const QPalette ground = shown.view()->viewport()->palette();
        const QColor dark
            = shown.window->grab().toImage().pixelColor(shown.window->rect().bottomLeft() + QPoint(2, -2));
        const QColor around = shown.view()->grab().toImage().pixelColor(3, 3);
        QApplication::setPalette(before);
        QVERIFY(contrast(dark, darkPalette().color(QPalette::WindowText)) > 7);
        QCOMPARE(around, ground.color(QPalette::Base));
        QVERIFY(contrast(around, Qt::black) > 7);
        for (QPalette::ColorRole role : {QPalette::WindowText, QPalette::Text})
            QVERIFY(contrast(ground.color(role), around) > 4.5);
        QTRY_VERIFY(shown.view()->grab().toImage().pixelColor(3, 3) != around); // it follows the palette
    }

private:
    QTemporaryDir m_folder;
};

ZEL_TEST_MAIN(TestMemory)
#include "tst_memory.moc"
