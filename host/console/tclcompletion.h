// SPDX-License-Identifier: MIT
#pragma once

#include "host/console/completion.h"

namespace mirn::zelchip {

struct PartialCommand;

// Completes the names of commands, the subcommands and options of the program's own commands, and the names of
// resources behind the options that take one. Stands in for a Completer.
class TclCompletion final
{
public:
    using Names = std::function<QStringList()>; // asked at each completion that needs them

    TclCompletion(Names commands, Names resources);

    // A name with blanks or other characters that mean something to Tcl is written as one word.
    Completion operator()(const QString& textBeforeCursor) const;

private:
    [[nodiscard]] QStringList wordsFor(const PartialCommand& command) const;

    Names m_commands;
    Names m_resources;
};

} // namespace mirn::zelchip
