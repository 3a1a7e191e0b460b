// SPDX-License-Identifier: MIT
#pragma once

#include "host/tcl/tclinterpreter.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <map>

namespace mirn::zelchip {

// The arguments of a command, such as "-rsc NAME -id N". Only the first error is kept; error() returns it in Tcl's own
// words.
class Arguments final
{
public:
    // `words` is without the command itself. `usage` is the whole command with its arguments, for the error message.
    // `options` take a value, `flags` do not; everything else is positional.
    Arguments(
        const QStringList& words, const QString& usage, const QStringList& options, const QStringList& flags = {});

    [[nodiscard]] bool isOk() const { return m_error.isEmpty(); }
    [[nodiscard]] TclResult error() const { return TclResult::error(m_error); }

    [[nodiscard]] bool has(const QString& option) const { return m_values.contains(option); }
    // Fails if the option is missing.
    QString text(const QString& option);
    // Fails also if the value is not an integer.
    int number(const QString& option);

    // Fails if there are more than `most` or fewer than `least`.
    QStringList positional(int least, int most);

private:
    void failUsage();

    const QString m_usage;
    QHash<QString, QString> m_values;
    QStringList m_positional;
    QString m_error;
};

// The subcommands of a command by their names, each called with the words after its name.
using Subcommands = std::map<QString, std::function<TclResult(const QStringList& words)>>;
[[nodiscard]] TclInterpreter::Command ensemble(Subcommands subcommands);

// Converts an error message, which is empty for success, into a result.
[[nodiscard]] TclResult resultOf(const QString& error);

} // namespace mirn::zelchip
