// SPDX-License-Identifier: MIT
#include "tests/program/virtualscreen.h"

#include <QDeadlineTimer>
#include <QFile>
#include <QStandardPaths>
#include <QThread>
#include <QtEndian>

#include <csignal>

#include <sys/prctl.h>

namespace {

constexpr int PatienceMilliseconds = 20'000; // with a start, on a busy machine

// The fields of an X window dump that say where its pixels are. All are 32 bits wide, the highest byte first.
enum DumpField {
    HeaderSize = 0,
    Width = 4,
    Height = 5,
    ByteOrder = 7,
    BitsPerPixel = 11,
    BytesPerLine = 12,
    Colors = 19
};
constexpr int DumpFields = 25;
constexpr int DumpColorSize = 12;

void end(QProcess& process)
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.kill();
    process.waitForFinished();
}

} // namespace

VirtualScreen::VirtualScreen()
    : m_environment(QProcessEnvironment::systemEnvironment())
{
    // Nothing of the user's own set-up counts here.
    for (const char* variable : {"HOME", "XDG_CONFIG_HOME", "XDG_CACHE_HOME", "XDG_RUNTIME_DIR"})
        m_environment.insert(QLatin1String(variable), m_folder.path());
    m_environment.remove(QStringLiteral("WAYLAND_DISPLAY"));
    m_environment.insert(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("xcb"));
}

VirtualScreen::~VirtualScreen()
{
    end(m_windowManager);
    end(m_server);
}

QString VirtualScreen::start()
{
    for (const char* program : {"Xvfb", "openbox", "xdotool"}) {
        if (QStandardPaths::findExecutable(QLatin1String(program)).isEmpty())
            return QStringLiteral("%1 is not installed; ./test installs it.").arg(QLatin1String(program));
    }
    const QString problem = startServer();
    return problem.isEmpty() ? startWindowManager() : problem;
}

// The server chooses a free display and names it once it can be used.
QString VirtualScreen::startServer()
{
    endWithParent(m_server);
    m_server.setStandardErrorFile(m_folder.filePath(QStringLiteral("server.log")));
    m_server.start(QStringLiteral("Xvfb"),
        {QStringLiteral("-displayfd"), QStringLiteral("1"), QStringLiteral("-screen"), QStringLiteral("0"),
            QStringLiteral("1600x1200x24"), QStringLiteral("-fbdir"), m_folder.path(), QStringLiteral("-noreset"),
            QStringLiteral("-nolisten"), QStringLiteral("tcp")});
    const QDeadlineTimer deadline(PatienceMilliseconds);
    while (!m_server.canReadLine()) {
        if (m_server.state() == QProcess::NotRunning || deadline.hasExpired()) {
            QFile log(m_folder.filePath(QStringLiteral("server.log")));
            return QStringLiteral("Xvfb does not start: ")
                + (log.open(QIODevice::ReadOnly) ? QString::fromLocal8Bit(log.readAll()) : m_server.errorString());
        }
        m_server.waitForReadyRead(100);
    }
    const QString display = QLatin1Char(':') + QString::fromLatin1(m_server.readLine().trimmed());
    m_environment.insert(QStringLiteral("DISPLAY"), display);
    return {};
}

QString VirtualScreen::startWindowManager()
{
    endWithParent(m_windowManager);
    m_windowManager.setProcessEnvironment(m_environment);
    m_windowManager.start(QStringLiteral("openbox"), {QStringLiteral("--sm-disable")});
    const QDeadlineTimer deadline(PatienceMilliseconds);
    bool isReady = false;
    while (!isReady) {
        if (deadline.hasExpired())
            return QStringLiteral("openbox does not start: ")
                + QString::fromLocal8Bit(m_windowManager.readAllStandardError());
        xdotool({QStringLiteral("get_num_desktops")}, &isReady);
        QThread::msleep(20);
    }
    return {};
}

QImage VirtualScreen::picture() const
{
    QFile file(m_folder.filePath(QStringLiteral("Xvfb_screen0")));
    if (!file.open(QIODevice::ReadOnly))
        return {};
    const QByteArray dump = file.readAll();
    if (dump.size() < DumpFields * 4)
        return {};
    const auto field = [&](DumpField index) { return qFromBigEndian<int>(dump.constData() + 4 * index); };
    const int begin = field(HeaderSize) + field(Colors) * DumpColorSize;
    if (field(BitsPerPixel) != 32 || field(ByteOrder) != 0 || dump.size() < begin + field(BytesPerLine) * field(Height))
        return {};
    const auto* pixels = reinterpret_cast<const uchar*>(dump.constData()) + begin;
    return QImage(pixels, field(Width), field(Height), field(BytesPerLine), QImage::Format_RGB32).copy();
}

QString VirtualScreen::xdotool(const QStringList& words, bool* isDone) const
{
    QProcess process;
    process.setProcessEnvironment(m_environment);
    process.start(QStringLiteral("xdotool"), words);
    const bool isFinished = process.waitForFinished(PatienceMilliseconds);
    if (isDone)
        *isDone = isFinished && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    return QString::fromUtf8(process.readAllStandardOutput()).trimmed();
}

void endWithParent(QProcess& process)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    process.setChildProcessModifier([] { prctl(PR_SET_PDEATHSIG, SIGKILL); });
#else
    Q_UNUSED(process)
#endif
}
