// SPDX-License-Identifier: MIT
#pragma once

#include "host/tcl/commandsyntax.h"
#include "host/tcl/tclinterpreter.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <map>

namespace mirn::zelchip {

// The arguments of a command, such as "-rsc NAME -id SITE", checked against its syntax. Only the first error is kept;
// error() returns it in Tcl's own words.
class Arguments final
{
public:
    // `words` is without the command itself. `usage` is the whole command with its arguments, for the error message.
    Arguments(const QStringList& words, const QString& usage, const CommandSyntax& syntax);

    [[nodiscard]] bool isOk() const { return m_isOk; }
    [[nodiscard]] TclResult error() const;

    [[nodiscard]] bool has(const QString& option) const { return m_values.contains(option); }
    // Returns an empty text for an option that is not there.
    [[nodiscard]] QString text(const QString& option) const { return texts(option).value(0); }
    // All values of an option that takes several.
    [[nodiscard]] QStringList texts(const QString& option) const { return m_values.value(option); }
    [[nodiscard]] const QStringList& positional() const { return m_positional; }

private:
    void sort(const QStringList& words, const CommandSyntax& syntax);
    [[nodiscard]] int take(const CommandSyntax::Option& option, const QStringList& words, const CommandSyntax& syntax);
    [[nodiscard]] bool isComplete(const CommandSyntax& syntax) const;

    const QString m_usage;
    QHash<QString, QStringList> m_values;
    QStringList m_positional;
    bool m_isOk = true;
};

// Carries out a command whose arguments fit its syntax.
using CommandHandler = std::function<TclResult(const Arguments& arguments)>;

// The subcommands of a command by their names. Their syntax is in the table of commands, and a call that does not fit
// is an error.
using Subcommands = std::map<QString, CommandHandler>;
[[nodiscard]] TclInterpreter::Command ensemble(const QString& command, Subcommands subcommands);

// The same for a command without subcommands.
[[nodiscard]] TclInterpreter::Command single(const QString& command, CommandHandler handler);

// Converts an error message, which is empty for success, into a result.
[[nodiscard]] TclResult resultOf(const QString& error);

} // namespace mirn::zelchip
