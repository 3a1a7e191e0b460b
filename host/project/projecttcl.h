// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>

namespace mirn::zelchip {

class ProjectSession;
class TclInterpreter;

// The actions for the subcommands of "zel_project". They return an empty text for success, else a sentence that says
// what went wrong.
struct ProjectCommands
{
    std::function<QString(const QString& path)> open;
    std::function<QString()> save;
    std::function<QString()> refresh;
    std::function<const ProjectSession&()> session; // returns the open session
};

// Adds zel_project open, import, save, export, refresh, info, which returns a dictionary, and check, which returns a
// list of them. The interpreter must outlive its commands.
void addProjectCommands(TclInterpreter& interpreter, const ProjectCommands& commands);

} // namespace mirn::zelchip
