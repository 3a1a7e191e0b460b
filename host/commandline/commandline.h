// SPDX-License-Identifier: MIT
#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

namespace mirn::zelchip {

// What the user asked for on the command line.
struct CommandLine
{
    enum class Task { ShowWindow, SaveSnapshot, RunBatch, PrintHelp, PrintVersion, ReportError };

    Task task = Task::ShowWindow;
    QString path; // a project folder or a drawing; empty for the sample project
    QString snapshotFile;
    QString scriptFile; // to run in the window, or for RunBatch without one; empty for none
    bool takesOver = false; // a project whose lock may not be of use any more
    QSize windowSize = QSize(1600, 1000); // device-independent pixels
    QString error; // one sentence, for ReportError
};

// `arguments` begins with the program's name. Needs no application object.
[[nodiscard]] CommandLine parseCommandLine(const QStringList& arguments);

// Ends with a line break.
[[nodiscard]] QString helpText();

} // namespace mirn::zelchip
