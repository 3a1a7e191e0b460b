// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

namespace mirn::zelchip {

class ProjectSession;
class TclInterpreter;

// What "zel_project" does in this run. Texts are empty for success, else a sentence that says what went wrong.
struct ProjectCommands
{
    std::function<QString(const QString& path)> open;
    std::function<QString()> save;
    std::function<QString()> refresh;
    std::function<const ProjectSession&()> session; // the open one
};

// zel_project open, save, info (a dictionary) and refresh.
void addProjectCommands(TclInterpreter& interpreter, const ProjectCommands& commands);

} // namespace mirn::zelchip
