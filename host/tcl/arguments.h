// SPDX-License-Identifier: MIT
#pragma once

#include "host/tcl/tclinterpreter.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <functional>
#include <map>

namespace mirn::zelchip {

// The options of a command: "-rsc NAME -id N". Reading stops at the first complaint, which error() gives in Tcl's own
// words.
class Arguments final
{
public:
    // `words` without the command itself; `usage` is the whole command with its arguments, for the complaint.
    // `options` are those that take a value, `flags` those that do not; what is neither is positional.
    Arguments(
        const QStringList& words, const QString& usage, const QStringList& options, const QStringList& flags = {});

    [[nodiscard]] bool isOk() const { return m_error.isEmpty(); }
    [[nodiscard]] TclResult error() const { return TclResult::error(m_error); }

    [[nodiscard]] bool has(const QString& option) const { return m_values.contains(option); }
    // Complains when the option is missing.
    QString text(const QString& option);
    // Also when it is no whole number.
    int number(const QString& option);

    // Complains when there are more than `most` or fewer than `least`.
    QStringList positional(int least, int most);

private:
    void complain();

    const QString m_usage;
    QHash<QString, QString> m_values;
    QStringList m_positional;
    QString m_error;
};

// A command whose second word says what to do.
using Subcommands = std::map<QString, std::function<TclResult(const QStringList& words)>>; // words behind the second
[[nodiscard]] TclInterpreter::Command ensemble(Subcommands subcommands);

// Empty text is success, anything else the message of an error.
[[nodiscard]] TclResult resultOf(const QString& refusal);

} // namespace mirn::zelchip
