// SPDX-License-Identifier: MIT
#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFont>
#include <QLocale>
#include <QPalette>
#include <QProcessEnvironment>
#include <QStyle>
#include <QTemporaryDir>
#include <QTest>

#include <clocale>
#include <functional>

#include <dlfcn.h>
#include <signal.h>

namespace {

QString line(const char* name, const QString& value)
{
    return QStringLiteral("%1: %2").arg(QLatin1String(name), value);
}

template <typename Value> QString line(const char* name, Value value)
{
    return line(name, QString::number(static_cast<qlonglong>(value)));
}

QStringList signalHandlers()
{
    QStringList lines;
    for (int number = 1; number < SIGRTMIN; ++number) {
        struct sigaction action = {};
        sigaction(number, nullptr, &action);
        lines.append(line("signal", reinterpret_cast<quintptr>(action.sa_handler)));
    }
    return lines;
}

quintptr messageHandler()
{
    const QtMessageHandler handler = qInstallMessageHandler(nullptr);
    qInstallMessageHandler(handler);
    return reinterpret_cast<quintptr>(handler);
}

QStringList homeFiles()
{
    QStringList lines;
    QDirIterator files(QDir::homePath(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
    while (files.hasNext())
        lines.append(line("file", files.next()));
    return lines;
}

// Named by what they run. Those of Qt's pool come with its painting, and go when they have had nothing to do for a
// while.
QStringList threads()
{
    QStringList lines;
    const QDir tasks(QStringLiteral("/proc/self/task"));
    for (const QString& id : tasks.entryList(QDir::Dirs | QDir::NoDotAndDotDot)) {
        QFile file(tasks.filePath(id + QStringLiteral("/comm")));
        if (file.open(QIODevice::ReadOnly))
            lines.append(line("thread", QString::fromLocal8Bit(file.readAll()).trimmed()));
    }
    lines.removeAll(QStringLiteral("thread: Thread (pooled)"));
    return lines;
}

QStringList applicationState()
{
    QStringList lines{line("application", qApp != nullptr)};
    for (int attribute = 0; attribute < Qt::AA_AttributeCount; ++attribute)
        lines.append(
            line("attribute", QCoreApplication::testAttribute(static_cast<Qt::ApplicationAttribute>(attribute))));
    lines.append(line("organisation", QCoreApplication::organizationName()));
    lines.append(line("default locale", QLocale().name()));
    if (qApp) {
        lines.append(line("style", reinterpret_cast<quintptr>(QApplication::style())));
        lines.append(line("style sheet", qApp->styleSheet()));
        lines.append(line("palette", QApplication::palette().cacheKey()));
        lines.append(line("font", QApplication::font().toString()));
        lines.append(line("quits with the last window", QGuiApplication::quitOnLastWindowClosed()));
        lines.append(line("cursor", QGuiApplication::overrideCursor() != nullptr));
        lines.append(line("top-level widgets", QApplication::topLevelWidgets().size()));
    }
    return lines;
}

// What belongs to the whole process and so to its program alone, one line each: locale, environment, working directory,
// signal handlers, threads, the application object with its look and attributes, settings written to the home folder.
QStringList processState()
{
    return QStringList{line("locale", QString::fromLocal8Bit(std::setlocale(LC_ALL, nullptr))),
               line("folder", QDir::currentPath()), line("message handler", messageHandler())}
    + QProcessEnvironment::systemEnvironment().toStringList() + signalHandlers() + threads() + homeFiles()
        + applicationState();
}

// The lines of libzel* in the process's memory map.
QStringList loadedLibraries()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        return {QStringLiteral("the memory map cannot be read")};
    return QString::fromLocal8Bit(maps.readAll()).split(QLatin1Char('\n')).filter(QStringLiteral("/libzel"));
}

// Holds the module, and through it the libraries, in memory.
class Module final
{
public:
    Module()
        : m_handle(dlopen(ZEL_VIEW_MODULE, RTLD_NOW | RTLD_LOCAL))
    { }
    ~Module()
    {
        if (m_handle)
            dlclose(m_handle);
    }
    Module(const Module&) = delete;
    Module& operator=(const Module&) = delete;

    [[nodiscard]] bool isLoaded() const { return m_handle != nullptr; }
    void useView() const { reinterpret_cast<void (*)()>(dlsym(m_handle, "useView"))(); }

private:
    void* const m_handle;
};

// The lines that came or went since.
QStringList changesSince(const QStringList& before)
{
    QStringList changes = processState();
    for (const QString& line : before) {
        if (!changes.removeOne(line))
            changes.append(QStringLiteral("no longer ") + line);
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
    TestNothingGlobal() { qputenv("HOME", QFile::encodeName(m_home.path())); }

private Q_SLOTS:
    void initTestCase()
    {
        for (const char* name : {"XDG_CONFIG_HOME", "XDG_DATA_HOME", "XDG_CACHE_HOME"})
            qunsetenv(name);
    }

    void loadingChangesNothing()
    {
        QVERIFY(!QCoreApplication::instance());
        comeAndGo([](const Module&) {});
    }

    void aViewChangesNothingAndCanBeUnloaded()
    {
        int argc = 1;
        char name[] = "tst_nothingglobal";
        char* argv[] = {name, nullptr};
        QApplication application(argc, argv);
        {
            // The desktop's own threads and caches come with the first window.
            QWidget first;
            first.show();
            QCoreApplication::processEvents();
        }
        comeAndGo([](const Module& module) { module.useView(); });
    }

private:
    static void comeAndGo(const std::function<void(const Module&)>& use)
    {
        const QStringList before = processState();
        for (int round = 0; round < 3; ++round) {
            {
                const Module module;
                QVERIFY2(module.isLoaded(), dlerror());
                QVERIFY(!loadedLibraries().isEmpty());
                use(module);
                QCOMPARE(changesSince(before).join(QLatin1Char('\n')), QString());
            }
            QCoreApplication::processEvents();
            QCOMPARE(loadedLibraries(), QStringList());
            QCOMPARE(changesSince(before).join(QLatin1Char('\n')), QString());
        }
    }

    QTemporaryDir m_home;
};

int main(int argc, char** argv)
{
    TestNothingGlobal tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "tst_nothingglobal.moc"
