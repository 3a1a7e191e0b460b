// SPDX-License-Identifier: MIT
#include "host/tcl/arguments.h"

#include "host/tcl/commandtable.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace mirn::zelchip {

namespace {

TclResult wrongArguments(const QString& usage)
{
    return TclResult::error(QStringLiteral("wrong # args: should be \"%1\"").arg(usage));
}

TclResult call(const CommandHandler& handler, const CommandEntry& entry, const QStringList& words)
{
    const Arguments arguments(words, entry.usage(), entry.syntax());
    return arguments.isOk() ? handler(arguments) : arguments.error();
}

} // namespace

Arguments::Arguments(const QStringList& words, const QString& usage, const CommandSyntax& syntax)
    : m_usage(usage)
{
    sort(words, syntax);
    m_isOk = m_isOk && isComplete(syntax);
}

void Arguments::sort(const QStringList& words, const CommandSyntax& syntax)
{
    for (int i = 0; i < words.size(); ++i) {
        const CommandSyntax::Option* option = syntax.option(words[i]);
        if (!option)
            m_positional.append(words[i]);
        else if (option->value.isEmpty())
            m_values.insert(words[i], {});
        else
            i += take(*option, words.mid(i + 1), syntax);
    }
}

// Returns how many of the words behind the option are its values: one, or all up to the next option.
int Arguments::take(const CommandSyntax::Option& option, const QStringList& words, const CommandSyntax& syntax)
{
    QStringList& values = m_values[option.name];
    m_isOk = m_isOk && !words.isEmpty() && (option.isRepeated || values.isEmpty());
    const auto isValue = [&](int index) {
        return index < words.size() && (index == 0 || (option.isRepeated && !syntax.option(words[index])));
    };
    int count = 0;
    for (; isValue(count); ++count)
        values.append(words[count]);
    return count;
}

bool Arguments::isComplete(const CommandSyntax& syntax) const
{
    const auto isThere = [this](const CommandSyntax::Option& option) { return !option.isRequired || has(option.name); };
    const auto least = std::count_if(
        syntax.values.begin(), syntax.values.end(), [](const CommandSyntax::Value& value) { return value.isRequired; });
    const auto count = static_cast<int>(m_positional.size());
    return std::all_of(syntax.options.begin(), syntax.options.end(), isThere) && count >= least
        && (count == 0 || syntax.valueAt(count - 1));
}

TclResult Arguments::error() const
{
    return wrongArguments(m_usage);
}

TclInterpreter::Command ensemble(const QString& command, Subcommands subcommands)
{
    return [command, subcommands = std::move(subcommands)](const QStringList& words) {
        const QString name = words.value(1);
        const std::vector<const CommandEntry*> forms = formsOf(words);
        const auto found = subcommands.find(name);
        if (found != subcommands.end() && !forms.empty())
            return call(found->second, *forms.front(), words.mid(forms.front()->wordCount()));
        QStringList names;
        for (const auto& subcommand : subcommands)
            names.append(subcommand.first);
        const QString expected = names.join(QStringLiteral(", "));
        if (words.size() < 2)
            return TclResult::error(
                QStringLiteral("wrong # args: should be \"%1 subcommand ?arg ...?\"; the subcommand must be %2")
                    .arg(command, expected));
        return TclResult::error(
            QStringLiteral("unknown subcommand \"%1\" of %2: must be %3").arg(name, command, expected));
    };
}

TclInterpreter::Command single(const QString& command, CommandHandler handler)
{
    const std::vector<const CommandEntry*> entries = commandEntries(command);
    Q_ASSERT(!entries.empty());
    return [entry = entries.front(), handler = std::move(handler)](
               const QStringList& words) { return call(handler, *entry, words.mid(1)); };
}

TclResult resultOf(const QString& error)
{
    return error.isEmpty() ? TclResult::value() : TclResult::error(error);
}

} // namespace mirn::zelchip
