// SPDX-License-Identifier: MIT
#pragma once

#include "host/console/completion.h"

namespace mirn::zelchip {

struct PartialCommand;

// Completes the names of commands and, for those in the table of commands, their subcommands, options and other fixed
// words and the names of resources and sites where they take one. It can be used as a Completer.
class TclCompletion final
{
public:
    using Names = std::function<QStringList()>; // called for each completion that needs them

    TclCompletion(Names commands, Names resources, Names sites);

    // A name with blanks or other characters that are special in Tcl is quoted as one word.
    Completion operator()(const QString& textBeforeCursor) const;

private:
    [[nodiscard]] QStringList wordsFor(const PartialCommand& command) const;

    [[nodiscard]] QStringList valuesFor(const QString& value, const QString& previousWord) const;

    Names m_commands;
    Names m_resources;
    Names m_sites;
};

} // namespace mirn::zelchip
