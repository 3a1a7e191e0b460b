// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

namespace mirn::zelchip {

// The request on the command line.
struct CommandLine
{
    enum class Task { ShowWindow, SaveSnapshot, RunBatch, PrintHelp, PrintVersion, ReportError };

    Task task = Task::ShowWindow;
    QString path; // a project folder or a drawing; empty for the sample project
    QString snapshotFile;
    QString scriptFile; // to run in the window, or without one for RunBatch; empty for none
    bool checks = false; // whether RunBatch ends with a check of the design
    bool takesOver = false; // whether to take over a lock that may no longer be in use
    QSize windowSize; // device-independent pixels; empty if none is given
    bool isFresh = false; // whether nothing is remembered from earlier runs
    QString error; // one sentence, for ReportError
};

// Parses `arguments`, which begins with the program's name. Needs no application object.
[[nodiscard]] CommandLine parseCommandLine(const QStringList& arguments);

// The text ends with a line break. `settingsFile` is where the program remembers its window.
[[nodiscard]] QString helpText(const QString& settingsFile);

} // namespace mirn::zelchip
