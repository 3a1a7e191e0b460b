// SPDX-License-Identifier: MIT
#pragma once

#include <QImage>
#include <QProcess>
#include <QStringList>
#include <QTemporaryDir>

// A screen of its own with a window manager and a pointer. All that was started ends with it, and also when the test is
// killed.
class VirtualScreen
{
public:
    VirtualScreen();
    ~VirtualScreen();

    // Empty, or what is missing.
    [[nodiscard]] QString start();

    // Of a program that shall show its windows here.
    [[nodiscard]] QProcessEnvironment environment() const { return m_environment; }

    // What the screen shows, in its pixels; null when that cannot be read.
    [[nodiscard]] QImage picture() const;

    // Moves and presses with xdotool's own words; its output. `isDone` tells whether it could.
    QString xdotool(const QStringList& words, bool* isDone = nullptr) const;

private:
    QString startServer();
    QString startWindowManager();

    QTemporaryDir m_folder;
    QProcessEnvironment m_environment;
    QProcess m_server;
    QProcess m_windowManager;
};

// The process ends when the one that started it does, however that came to its end.
void endWithParent(QProcess& process);
