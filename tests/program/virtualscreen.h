// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/files.h"

#include <QElapsedTimer>
#include <QImage>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <QThread>

#include <csignal>

#include <sys/prctl.h>

// The process ends when the one that started it does, however that came to its end.
inline void endWithParent(QProcess& process)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
#else
    Q_UNUSED(process)
#endif
}

// A screen of its own with a window manager and a pointer. All that was started ends with it, and also when the test is
// killed.
class VirtualScreen
{
public:
    VirtualScreen()
    {
        // The user's own set-up must not count here.
        for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
            m_environment.insert(variable, m_folder.path());
        m_environment.remove("WAYLAND_DISPLAY");
        m_environment.insert("QT_QPA_PLATFORM", "xcb");
    }

    ~VirtualScreen()
    {
        for (QProcess* process : {&m_windowManager, &m_server}) {
            process->kill();
            process->waitForFinished();
        }
    }

    // Returns what is missing; empty when the screen is there.
    [[nodiscard]] QString start()
    {
        for (const char* program : {"Xvfb", "openbox", "xdotool"}) {
            if (QStandardPaths::findExecutable(program).isEmpty())
                return QString("%1 is not installed; ./test installs it.").arg(program);
        }
        // The server chooses a free display and names it once it can be used.
        QElapsedTimer clock;
        clock.start();
        start(m_server, "Xvfb",
            {"-displayfd", "1", "-screen", "0", QString("%1x%2x24").arg(Width).arg(Height), "-fbdir", m_folder.path(),
                "-noreset", "-nolisten", "tcp"});
        while (!m_server.canReadLine()) {
            if (m_server.state() == QProcess::NotRunning || clock.elapsed() > PatienceMilliseconds)
                return "Xvfb does not start: " + m_server.errorString() + m_server.readAllStandardError();
            m_server.waitForReadyRead(100);
        }
        m_environment.insert("DISPLAY", ':' + m_server.readLine().trimmed());
        start(m_windowManager, "openbox", {"--sm-disable"});
        while (xdotool({"get_num_desktops"}).isEmpty()) {
            if (clock.elapsed() > PatienceMilliseconds)
                return "openbox does not start: " + m_windowManager.readAllStandardError();
            QThread::msleep(20);
        }
        return {};
    }

    // The environment of a program that shall show its windows here.
    [[nodiscard]] QProcessEnvironment environment() const { return m_environment; }

    // The picture on the screen; null when it cannot be read. Its pixels stand at the end of the server's dump.
    [[nodiscard]] QImage picture() const
    {
        const QByteArray pixels = zeltest::contentOf(m_folder.filePath("Xvfb_screen0")).right(4 * Width * Height);
        if (pixels.size() < 4 * Width * Height)
            return {};
        return QImage(reinterpret_cast<const uchar*>(pixels.constData()), Width, Height, QImage::Format_RGB32).copy();
    }

    // Moves and presses with xdotool's own words. Returns what it says; empty when it could not.
    QString xdotool(const QStringList& words) const
    {
        QProcess process;
        process.setProcessEnvironment(m_environment);
        process.start("xdotool", words);
        const bool isDone = process.waitForFinished(PatienceMilliseconds) && process.exitCode() == 0;
        return isDone ? QString::fromUtf8(process.readAllStandardOutput()).trimmed() : QString();
    }

private:
    static constexpr int PatienceMilliseconds = 20'000; // with a start, on a busy machine
    static constexpr int Width = 1600;
    static constexpr int Height = 1200;

    void start(QProcess& process, const QString& program, const QStringList& arguments)
    {
        endWithParent(process);
        process.setProcessEnvironment(m_environment);
        process.start(program, arguments);
    }

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment = QProcessEnvironment::systemEnvironment();
    QProcess m_server;
    QProcess m_windowManager;
};
