// SPDX-License-Identifier: MIT
#include "tests/support/files.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFont>
#include <QLibrary>
#include <QLocale>
#include <QPalette>
#include <QProcessEnvironment>
#include <QStyle>
#include <QTemporaryDir>
#include <QTest>
#include <QVariant>

#include <clocale>

#include <signal.h>

namespace {

// The state of the whole process, which belongs to its program alone, one line each: environment, locale, working
// directory, signal handlers, threads, settings written to the home folder, the application object with its look and
// attributes.
QStringList processState()
{
    QStringList lines = QProcessEnvironment::systemEnvironment().toStringList();
    const auto note = [&lines](const char* name, const QVariant& value) {
        lines.append(QString("%1: %2").arg(name, value.toString()));
    };
    note("locale", QString::fromLocal8Bit(std::setlocale(LC_ALL, nullptr)));
    note("default locale", QLocale().name());
    note("folder", QDir::currentPath());
    const QtMessageHandler handler = qInstallMessageHandler(nullptr);
    qInstallMessageHandler(handler);
    note("message handler", reinterpret_cast<qulonglong>(handler));
    for (int number = 1; number < SIGRTMIN; ++number) {
        struct sigaction action = {};
        sigaction(number, nullptr, &action);
        note("signal", reinterpret_cast<qulonglong>(action.sa_handler));
    }
    // Threads are named by what they run. Those of Qt's pool come with its painting, and go when they have had nothing
    // to do for a while.
    const QDir tasks("/proc/self/task");
    for (const QString& id : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot))
        note("thread", zeltest::contentOf(tasks.filePath(id + "/comm")).trimmed());
    lines.removeAll("thread: Thread (pooled)");
    QDirIterator files(QDir::homePath(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext())
        note("file", files.next());
    for (int attribute = 0; attribute < Qt::AA_AttributeCount; ++attribute)
        note("attribute", QCoreApplication::testAttribute(static_cast<Qt::ApplicationAttribute>(attribute)));
    note("organisation", QCoreApplication::organizationName());
    note("application", qApp != nullptr);
    if (qApp) {
        note("style", reinterpret_cast<qulonglong>(QApplication::style()));
        note("style sheet", qApp->styleSheet());
        note("palette", QApplication::palette().cacheKey());
        note("font", QApplication::font().toString());
        note("quits with the last window", QGuiApplication::quitOnLastWindowClosed());
        note("cursor", QGuiApplication::overrideCursor() != nullptr);
        note("top-level widgets", QApplication::topLevelWidgets().size());
    }
    return lines;
}

// Whether one of our libraries is in the process's memory map.
bool isLibraryLoaded()
{
    return zeltest::contentOf("/proc/self/maps").contains("/libzel");
}

// The lines that came or went since then.
QStringList changesSince(const QStringList& before)
{
    QStringList changes = processState();
    for (const QString& line : before) {
        if (!changes.removeOne(line))
            changes.append("no longer " + line);
    }
    return changes;
}

} // namespace

// The libraries come and go and leave everything as the program had it. Nothing here links them: they are loaded with a
// module that uses the view.
class TestNothingGlobal final : public QObject
{
    Q_OBJECT
public:
    TestNothingGlobal()
    {
        qputenv("HOME", QFile::encodeName(m_home.path()));
        for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
            qunsetenv(name);
    }

private Q_SLOTS:
    void loadingChangesNothing()
    {
        QVERIFY(!QCoreApplication::instance());
        comeAndGo();
    }

    void viewChangesNothingAndCanBeUnloaded()
    {
        int argc = 1;
        char name[] = "tst_nothingglobal";
        char* argv[] = {name, nullptr};
        QApplication application(argc, argv);
        QWidget first; // with which the desktop's own threads and caches come
        first.show();
        QCoreApplication::processEvents();
        comeAndGo("useView");
    }

private:
    static void comeAndGo(const char* function = nullptr)
    {
        const QStringList before = processState();
        for (int round = 0; round < 3; ++round) {
            QLibrary module(ZEL_VIEW_MODULE); // holds the libraries in memory as well
            QVERIFY2(module.load(), qPrintable(module.errorString()));
            QVERIFY(isLibraryLoaded());
            if (function)
                module.resolve(function)();
            QCOMPARE(changesSince(before).join('\n'), QString());
            QVERIFY(module.unload());
            QCoreApplication::processEvents();
            QVERIFY(!isLibraryLoaded());
            QCOMPARE(changesSince(before).join('\n'), QString());
        }
    }

    QTemporaryDir m_home;
};

QTEST_APPLESS_MAIN(TestNothingGlobal)
#include "tst_nothingglobal.moc"
