// SPDX-License-Identifier: MIT
#pragma once

#include "host/tcl/commandsyntax.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelchip {

// A command of the program, or one subcommand of it, as its users see it. Usage errors, the command "help", completion
// and docs/commands.md all come from the table of these entries; a new command is a row of the table and a handler.
struct CommandEntry
{
    const char* command;
    const char* subcommand; // one or two words; empty for a command that has none
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

// Returns null if there is none.
[[nodiscard]] const CommandEntry* commandEntry(const QString& command, const QString& subcommand = {});

// The entry that the first words of a call mean; null if there is none. A subcommand may have two words.
[[nodiscard]] const CommandEntry* commandEntryOf(const QStringList& words);

// The entries of one command, or all of them for an empty text.
[[nodiscard]] std::vector<const CommandEntry*> commandEntries(const QString& command = {});

// The names of the commands, each once, in the order of the table.
[[nodiscard]] QStringList tableCommands();

// Empty for a command that has none.
[[nodiscard]] QStringList subcommandsOf(const QString& command);

} // namespace mirn::zelchip
