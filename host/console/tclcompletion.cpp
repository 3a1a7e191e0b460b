// SPDX-License-Identifier: MIT
#include "host/console/tclcompletion.h"

#include "host/console/partialcommand.h"
#include "host/tcl/commandtable.h"
#include "host/tcl/tclinterpreter.h"

#include <algorithm>
#include <utility>
#include <vector>

namespace mirn::zelchip {

namespace {

// The values of arguments that can be completed, as the table of commands has them.
const QString ResourceValue = QStringLiteral("NAME");
const QString SiteValue = QStringLiteral("SITE");
const QString CommandValue = QStringLiteral("COMMAND");
const QString SubcommandValue = QStringLiteral("SUBCOMMAND");

// What may come next behind the finished words of a command.
struct Expected
{
    QStringList words; // fixed ones
    QString value; // what stands for a value in the table of commands; empty if none may come
};

// `words` are those behind the command and its subcommand.
Expected expectedArgument(const CommandSyntax& syntax, const QStringList& words)
{
    int values = 0;
    for (int i = 0; i < words.size(); ++i) {
        const CommandSyntax::Option* option = syntax.option(words.at(i));
        if (option && !option->value.isEmpty() && ++i == words.size())
            return {{}, option->value};
        values += option ? 0 : 1;
    }
    Expected expected;
    for (const CommandSyntax::Option& option : syntax.options) {
        if (!words.contains(option.name))
            expected.words.append(option.name);
    }
    if (const CommandSyntax::Value* value = syntax.valueAt(values))
        expected.value = value->text;
    return expected;
}

// What is left of a form of a command. Where a flag chooses the form, it comes first.
Expected expectedOf(const CommandSyntax& syntax, const QStringList& words)
{
    const Expected expected = expectedArgument(syntax, words);
    for (const CommandSyntax::Option& option : syntax.options) {
        if (option.isRequired && option.value.isEmpty() && expected.words.contains(option.name))
            return {{option.name}, expected.value};
    }
    return expected;
}

Expected expectedBehind(const QStringList& words)
{
    if (words.isEmpty())
        return {};
    const std::vector<const CommandEntry*> forms = formsOf(words);
    if (forms.empty())
        return words.size() == 1 ? Expected{subcommandsOf(words.first()), {}} : Expected();
    Expected expected;
    for (const CommandEntry* form : forms) {
        const Expected ofForm = expectedOf(form->syntax(), words.mid(form->wordCount()));
        expected.words += ofForm.words;
        if (expected.value.isEmpty())
            expected.value = ofForm.value;
    }
    return expected;
}

// Whether the next word is a name, so that a brace is part of it and holds no script.
bool isNameDue(const PartialCommand& command)
{
    const QString value = expectedBehind(command.words).value;
    return value == ResourceValue || value == SiteValue;
}

QString commonBeginning(const QStringList& texts)
{
    QString common = texts.first();
    for (const QString& text : texts) {
        const auto ends = std::mismatch(common.cbegin(), common.cend(), text.cbegin(), text.cend());
        common.truncate(static_cast<int>(ends.first - common.cbegin()));
    }
    if (!common.isEmpty() && common.at(common.size() - 1).isHighSurrogate())
        common.chop(1);
    return common;
}

// Returns a text as the beginning of a Tcl word to which more characters can be added.
QString openWord(const QString& text, bool isBraced)
{
    if (!isBraced && TclInterpreter::list({text}) == text)
        return text;
    const QString unsafeInBraces = QStringLiteral("{}\\");
    const auto isUnsafe = [&](QChar character) { return unsafeInBraces.contains(character); };
    if (std::none_of(text.begin(), text.end(), isUnsafe))
        return QLatin1Char('{') + text;
    QString escaped;
    for (const QChar character : text) {
        if (QStringLiteral(" \t;\"$[]{}\\").contains(character))
            escaped += QLatin1Char('\\');
        escaped += character;
    }
    return escaped;
}

Completion completionOf(const QString& script, const PartialCommand& command, const QStringList& words)
{
    Completion completion;
    completion.start = command.start;
    for (const QString& word : words) {
        if (word.startsWith(command.word))
            completion.candidates.append(word);
    }
    completion.candidates.removeDuplicates();
    completion.text = script.mid(command.start);
    if (completion.candidates.size() == 1) {
        completion.text = TclInterpreter::list(completion.candidates) + QLatin1Char(' ');
    } else if (!completion.candidates.isEmpty()) {
        const QString common = commonBeginning(completion.candidates);
        if (common != command.word)
            completion.text = openWord(common, completion.text.startsWith(QLatin1Char('{')));
    }
    return completion;
}

} // namespace

TclCompletion::TclCompletion(Names commands, Names resources, Names sites)
    : m_commands(std::move(commands))
    , m_resources(std::move(resources))
    , m_sites(std::move(sites))
{ }

Completion TclCompletion::operator()(const QString& textBeforeCursor) const
{
    const std::vector<PartialCommand> readings = partialCommands(textBeforeCursor);
    const auto found = std::find_if(readings.begin(), readings.end(), isNameDue);
    const PartialCommand& reading = found == readings.end() ? readings.back() : *found;
    return completionOf(textBeforeCursor, reading, wordsFor(reading));
}

QStringList TclCompletion::wordsFor(const PartialCommand& command) const
{
    if (command.words.isEmpty())
        return m_commands();
    const Expected expected = expectedBehind(command.words);
    return expected.words + valuesFor(expected.value, command.words.last());
}

QStringList TclCompletion::valuesFor(const QString& value, const QString& previousWord) const
{
    if (value == ResourceValue)
        return m_resources();
    if (value == SiteValue)
        return m_sites();
    if (value == CommandValue)
        return tableCommands();
    if (value == SubcommandValue)
        return subcommandsOf(previousWord);
    return value.contains(QLatin1Char('|')) ? value.split(QLatin1Char('|')) : QStringList();
}

} // namespace mirn::zelchip
