// SPDX-License-Identifier: MIT
#pragma once

#include "host/tcl/commandsyntax.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelchip {

// A command of the program, or one subcommand of it, as its users see it. Usage errors, the command "help", completion
// and docs/commands.md all come from the table of these entries; a new command is a row of the table and a handler. A
// subcommand that has several forms, with other arguments each, has a row for each form and one handler.
struct CommandEntry
{
    const char* command;
    const char* subcommand; // one word; empty for a command that has none
    const char* arguments; // as in CommandSyntax; empty if there are none
    const char* summary; // a whole sentence
    const char* example; // a script; together they run on the sample project, in the order of the table
    const char* answer; // of the example; empty if there is none, or if it depends on the window

    [[nodiscard]] QString name() const; // "zel_view fit"
    [[nodiscard]] int wordCount() const; // of the name
    [[nodiscard]] QString usage() const; // the name and the arguments
    [[nodiscard]] CommandSyntax syntax() const { return CommandSyntax(QString::fromLatin1(arguments)); }
};

// All of them; those of one command stand together.
[[nodiscard]] const std::vector<CommandEntry>& commandTable();

// The forms that a call, or the beginning of one, may have: those that know all its options, or the first form where
// none does. Empty if there is no such command or subcommand.
[[nodiscard]] std::vector<const CommandEntry*> formsOf(const QStringList& words);

// The entries of one command.
[[nodiscard]] std::vector<const CommandEntry*> commandEntries(const QString& command);

// Those of one of its subcommands, or of a command that has none.
[[nodiscard]] std::vector<const CommandEntry*> commandEntries(const QString& command, const QString& subcommand);

// The names of the commands, each once, in the order of the table.
[[nodiscard]] QStringList tableCommands();

// Each once; empty for a command that has none.
[[nodiscard]] QStringList subcommandsOf(const QString& command);

} // namespace mirn::zelchip
