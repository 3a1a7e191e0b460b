// SPDX-License-Identifier: MIT
#include "tests/library/processstate.h"

#include <QApplication>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFont>
#include <QLocale>
#include <QPalette>
#include <QProcessEnvironment>
#include <QStyle>

#include <clocale>

#include <signal.h>

namespace zeltest {

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

} // namespace

QStringList processState()
{
    return QStringList{line("locale", QString::fromLocal8Bit(std::setlocale(LC_ALL, nullptr))),
               line("folder", QDir::currentPath()), line("message handler", messageHandler())}
    + QProcessEnvironment::systemEnvironment().toStringList() + signalHandlers() + threads() + homeFiles()
        + applicationState();
}

QStringList loadedLibraries()
{
    QFile maps(QStringLiteral("/proc/self/maps"));
    if (!maps.open(QIODevice::ReadOnly))
        return {QStringLiteral("the memory map cannot be read")};
    return QString::fromLocal8Bit(maps.readAll()).split(QLatin1Char('\n')).filter(QStringLiteral("/libzel"));
}

} // namespace zeltest
