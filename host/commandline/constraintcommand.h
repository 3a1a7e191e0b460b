// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

namespace mirn::zelchip {

// The request of "zelchip export" or "zelchip place", which write and read constraints without a window.
struct ConstraintCommand
{
    enum class Task { None, Export, Place };

    Task task = Task::None; // of none if the arguments begin with neither word
    QString project; // a folder
    QString implementation; // empty for the default one
    QString format; // the name or file of a template
    QString output; // empty for the standard output
    QString table; // to place from
    bool printsHelp = false;
    QString error; // one sentence about the arguments; empty if they are right
};

// Parses the arguments behind the program's name. Needs no application object.
[[nodiscard]] ConstraintCommand parseConstraintCommand(const QStringList& arguments);

// The text ends with a line break.
[[nodiscard]] QString constraintHelpText(ConstraintCommand::Task task);

// Opens the project, carries out the command and says on stderr what went wrong. Returns the exit status: 1 also if a
// line of a table was refused.
[[nodiscard]] int runConstraintCommand(const ConstraintCommand& command);

} // namespace mirn::zelchip
