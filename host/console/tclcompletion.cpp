// SPDX-License-Identifier: MIT
#include "host/console/tclcompletion.h"

#include "host/console/partialcommand.h"
#include "host/tcl/tclinterpreter.h"

#include <algorithm>
#include <utility>

namespace mirn::zelchip {

namespace {

// The words that may follow a command and its subcommand; the subcommand is empty if it has none.
struct Syntax
{
    const char* command;
    const char* subcommand;
    const char* words;
};

const Syntax Syntaxes[] = {
    {"zel_resource", "place", "-rsc -id"},
    {"zel_resource", "reset", "-ip"},
    {"zel_resource", "remove", "-ip"},
    {"zel_resource", "restore", "-ip"},
    {"zel_resource", "configure", "-ip -key -value"},
    {"zel_resource", "list", "-unplaced"},
    {"zel_resource", "get", "-ip"},
    {"zel_resource", "sites", "-rsc"},
    {"zel_resource", "why", "-rsc -id"},
    {"zel_setting", "", "-id -key -value"},
    {"zel_view", "fit", ""},
    {"zel_view", "in", ""},
    {"zel_view", "out", ""},
    {"zel_view", "zoom", ""},
    {"zel_view", "select", ""},
    {"zel_view", "selected", ""},
    {"zel_view", "mode", "select zoom pan"},
    {"zel_view", "snapshot", ""},
    {"zel_view", "where", "-id"},
    {"zel_tree", "where", "-rsc"},
    {"zel_tree", "expand", ""},
    {"zel_tree", "collapse", ""},
    {"zel_tree", "select", "-rsc"},
    {"zel_project", "open", ""},
    {"zel_project", "save", ""},
    {"zel_project", "info", ""},
    {"zel_project", "refresh", ""},
};

bool isOption(const QString& word)
{
    return word.startsWith(QLatin1Char('-'));
}

bool takesResource(const QString& option)
{
    return option == QLatin1String("-rsc") || option == QLatin1String("-ip");
}

bool takesOtherValue(const QString& option)
{
    return option == QLatin1String("-id") || option == QLatin1String("-key") || option == QLatin1String("-value");
}

bool isOwn(const QString& command)
{
    return std::any_of(std::begin(Syntaxes), std::end(Syntaxes),
        [&](const Syntax& syntax) { return command == QLatin1String(syntax.command); });
}

// Returns subcommands, options that are not used yet, or the words that may directly follow a subcommand.
QStringList wordsBehind(const QStringList& words)
{
    QStringList result;
    for (const Syntax& syntax : Syntaxes) {
        const QString subcommand = QString::fromLatin1(syntax.subcommand);
        const int head = subcommand.isEmpty() ? 1 : 2;
        if (words.first() != QLatin1String(syntax.command))
            continue;
        if (words.size() < head)
            result.append(subcommand);
        else if (head == 1 || words.at(1) == subcommand) {
            for (const QString& word : QString::fromLatin1(syntax.words).split(QLatin1Char(' '))) {
                if (isOption(word) ? !words.contains(word) : !word.isEmpty() && words.size() == head)
                    result.append(word);
            }
        }
    }
    return result;
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

TclCompletion::TclCompletion(Names commands, Names resources)
    : m_commands(std::move(commands))
    , m_resources(std::move(resources))
{ }

Completion TclCompletion::operator()(const QString& textBeforeCursor) const
{
    const std::vector<PartialCommand> readings = partialCommands(textBeforeCursor);
    const auto isResource = [](const PartialCommand& reading) {
        return !reading.words.isEmpty() && takesResource(reading.words.last()) && isOwn(reading.words.first());
    };
    // A brace after such an option is part of a name; any other one holds a script.
    const auto found = std::find_if(readings.begin(), readings.end(), isResource);
    if (found != readings.end())
        return completionOf(textBeforeCursor, *found, m_resources());
    return completionOf(textBeforeCursor, readings.back(), wordsFor(readings.back()));
}

QStringList TclCompletion::wordsFor(const PartialCommand& command) const
{
    if (command.words.isEmpty())
        return m_commands();
    if (takesOtherValue(command.words.last()))
        return {};
    return wordsBehind(command.words);
}

} // namespace mirn::zelchip
