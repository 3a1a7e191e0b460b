// SPDX-License-Identifier: MIT
#pragma once

#include "host/console/completion.h"

namespace mirn::zelchip {

struct PartialCommand;

// Completes the names of commands, the subcommands and options of the program's own commands, and resource names after
// the options that take one. It can be used as a Completer.
class TclCompletion final
{
public:
    using Names = std::function<QStringList()>; // called for each completion that needs them

    TclCompletion(Names commands, Names resources);

    // A name with blanks or other characters that are special in Tcl is quoted as one word.
    Completion operator()(const QString& textBeforeCursor) const;

private:
    [[nodiscard]] QStringList wordsFor(const PartialCommand& command) const;

    Names m_commands;
    Names m_resources;
};

} // namespace mirn::zelchip
