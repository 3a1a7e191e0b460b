// SPDX-License-Identifier: MIT
#include "tests/library/processstate.h"

#include <QApplication>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

#include <dlfcn.h>

namespace {

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
    QStringList changes = zeltest::processState();
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
        const QStringList before = zeltest::processState();
        for (int round = 0; round < 3; ++round) {
            {
                const Module module;
                QVERIFY2(module.isLoaded(), dlerror());
                QVERIFY(!zeltest::loadedLibraries().isEmpty());
                QCOMPARE(changesSince(before).join(QLatin1Char('\n')), QString());
            }
            QCOMPARE(zeltest::loadedLibraries(), QStringList());
            QCOMPARE(changesSince(before).join(QLatin1Char('\n')), QString());
        }
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
        const QStringList before = zeltest::processState();
        for (int round = 0; round < 3; ++round) {
            {
                const Module module;
                QVERIFY2(module.isLoaded(), dlerror());
                module.useView();
                QCOMPARE(changesSince(before).join(QLatin1Char('\n')), QString());
            }
            QCoreApplication::processEvents();
            QCOMPARE(zeltest::loadedLibraries(), QStringList());
            QCOMPARE(changesSince(before).join(QLatin1Char('\n')), QString());
        }
    }

private:
    QTemporaryDir m_home;
};

int main(int argc, char** argv)
{
    TestNothingGlobal tests;
    return QTest::qExec(&tests, argc, argv);
}

#include "tst_nothingglobal.moc"
