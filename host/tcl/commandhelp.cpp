// SPDX-License-Identifier: MIT
#include "host/tcl/commandhelp.h"

#include "host/tcl/arguments.h"
#include "host/tcl/commandtable.h"
#include "host/tcl/tclinterpreter.h"

#include <algorithm>

namespace mirn::zelchip {

namespace {

const char Introduction[] = R"(# Commands

`zelchip` adds these commands to those of Tcl 8.6. They can be typed into the console, and stand in the scripts of
`--script` and `--batch`; without a window there are no `zel_view` and `zel_tree`. In the console, `help` lists them,
`help COMMAND` explains one, and Tab completes their words, the names of resources and those of sites.

- `NAME` is the path of a resource, such as `gateway/clocks/pll_ddr`.
- `SITE` is the name of a site or its id. A number is always an id, so a site that is named like a number can only be
  reached by its id. `zel_view` takes the id of any element of the drawing. The journal and the placement file contain
  ids only.
- What stands between question marks can be left out.

The examples run one after the other on the sample project.
)";

const int Gap = 2; // characters between the columns

QString overview()
{
    int width = 0;
    for (const CommandEntry& entry : commandTable())
        width = std::max(width, static_cast<int>(entry.name().size()) + Gap);
    QString text;
    for (const CommandEntry& entry : commandTable())
        text += entry.name().leftJustified(width) + QLatin1String(entry.summary) + QLatin1Char('\n');
    return text + QStringLiteral("\"help COMMAND\" shows the arguments and an example, as in \"help zel_view where\".");
}

QString explanation(const CommandEntry& entry)
{
    return QStringLiteral("%1\n    %2\n    Example: %3")
        .arg(entry.usage(), QLatin1String(entry.summary), QLatin1String(entry.example));
}

QString explanation(const std::vector<const CommandEntry*>& entries)
{
    QStringList texts;
    for (const CommandEntry* entry : entries)
        texts.append(explanation(*entry));
    return texts.join(QLatin1Char('\n'));
}

TclResult unknown(const QString& what, const QStringList& known)
{
    return TclResult::error(QStringLiteral("unknown %1: must be %2").arg(what, known.join(QStringLiteral(", "))));
}

TclResult help(TclInterpreter& interpreter, const QStringList& words)
{
    const QString command = words.value(0);
    const QString subcommand = words.value(1);
    if (words.isEmpty()) {
        interpreter.write(overview());
        return TclResult::value();
    }
    const std::vector<const CommandEntry*> entries = commandEntries(command);
    if (command.isEmpty() || entries.empty())
        return unknown(QStringLiteral("command \"%1\"").arg(command), tableCommands());
    if (words.size() == 1) {
        interpreter.write(explanation(entries));
        return TclResult::value();
    }
    const std::vector<const CommandEntry*> forms = commandEntries(command, subcommand);
    if (forms.empty() || subcommand.isEmpty())
        return subcommandsOf(command).isEmpty()
            ? TclResult::error(QStringLiteral("%1 has no subcommands").arg(command))
            : unknown(QStringLiteral("subcommand \"%1\" of %2").arg(subcommand, command), subcommandsOf(command));
    interpreter.write(explanation(forms));
    return TclResult::value();
}

// The forms of a subcommand stand below one heading.
QString headingOf(const CommandEntry& entry)
{
    if (commandEntries(QString::fromLatin1(entry.command), QString::fromLatin1(entry.subcommand)).front() != &entry)
        return {};
    return QStringLiteral("\n%1 %2\n")
        .arg(*entry.subcommand ? QStringLiteral("###") : QStringLiteral("##"), entry.name());
}

QString sectionOf(const CommandEntry& entry)
{
    const QString answer = *entry.answer ? QStringLiteral(" returns `%1`").arg(QLatin1String(entry.answer)) : QString();
    return headingOf(entry)
        + QStringLiteral("\n    %1\n\n%2\n\nExample: `%3`%4\n")
              .arg(entry.usage(), QLatin1String(entry.summary), QLatin1String(entry.example), answer);
}

} // namespace

void addHelpCommand(TclInterpreter& interpreter)
{
    interpreter.addCommand(QStringLiteral("help"),
        single(QStringLiteral("help"),
            [&interpreter](const Arguments& arguments) { return help(interpreter, arguments.positional()); }));
}

QString commandReference()
{
    QString text = QLatin1String(Introduction);
    for (const QString& command : tableCommands()) {
        if (!subcommandsOf(command).isEmpty())
            text += QStringLiteral("\n## %1\n").arg(command);
        for (const CommandEntry* entry : commandEntries(command))
            text += sectionOf(*entry);
    }
    return text;
}

} // namespace mirn::zelchip
