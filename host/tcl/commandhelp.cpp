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

// The forms of one subcommand, or of a command that has none; help shows them as one.
using Forms = std::vector<const CommandEntry*>;

std::vector<Forms> formsOfEach(const QString& command)
{
    std::vector<Forms> result;
    for (const CommandEntry* entry : commandEntries(command)) {
        if (result.empty() || result.back().front()->name() != entry->name())
            result.emplace_back();
        result.back().push_back(entry);
    }
    return result;
}

QString summaryOf(const Forms& forms)
{
    QStringList sentences;
    for (const CommandEntry* form : forms)
        sentences.append(QLatin1String(form->summary));
    return sentences.join(QLatin1Char(' '));
}

QString overview()
{
    int width = 0;
    for (const CommandEntry& entry : commandTable())
        width = std::max(width, static_cast<int>(entry.name().size()) + Gap);
    QString text;
    for (const QString& command : tableCommands()) {
        for (const Forms& forms : formsOfEach(command))
            text += forms.front()->name().leftJustified(width) + summaryOf(forms) + QLatin1Char('\n');
    }
    return text + QStringLiteral("\"help COMMAND\" shows the arguments and an example, as in \"help zel_view where\".");
}

QString explanation(const Forms& forms)
{
    QStringList lines;
    for (const CommandEntry* form : forms)
        lines.append(form->usage());
    lines.append(QStringLiteral("    ") + summaryOf(forms));
    for (const CommandEntry* form : forms)
        lines.append(QStringLiteral("    Example: ") + QLatin1String(form->example));
    return lines.join(QLatin1Char('\n'));
}

QString explanation(const QString& command)
{
    QStringList texts;
    for (const Forms& forms : formsOfEach(command))
        texts.append(explanation(forms));
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
    if (command.isEmpty() || commandEntries(command).empty())
        return unknown(QStringLiteral("command \"%1\"").arg(command), tableCommands());
    if (words.size() == 1) {
        interpreter.write(explanation(command));
        return TclResult::value();
    }
    const Forms forms = commandEntries(command, subcommand);
    if (forms.empty() || subcommand.isEmpty())
        return subcommandsOf(command).isEmpty()
            ? TclResult::error(QStringLiteral("%1 has no subcommands").arg(command))
            : unknown(QStringLiteral("subcommand \"%1\" of %2").arg(subcommand, command), subcommandsOf(command));
    interpreter.write(explanation(forms));
    return TclResult::value();
}

QString paragraphOf(const CommandEntry& form)
{
    const QString answer = *form.answer ? QStringLiteral(" returns `%1`").arg(QLatin1String(form.answer)) : QString();
    return QStringLiteral("\n    %1\n\n%2\n\nExample: `%3`%4\n")
        .arg(form.usage(), QLatin1String(form.summary), QLatin1String(form.example), answer);
}

QString sectionOf(const Forms& forms)
{
    const bool isSubcommand = *forms.front()->subcommand;
    QString text = QStringLiteral("\n%1 %2\n")
                       .arg(isSubcommand ? QStringLiteral("###") : QStringLiteral("##"), forms.front()->name());
    for (const CommandEntry* form : forms)
        text += paragraphOf(*form);
    return text;
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
        for (const Forms& forms : formsOfEach(command))
            text += sectionOf(forms);
    }
    return text;
}

} // namespace mirn::zelchip
