// SPDX-License-Identifier: MIT
#include "host/console/partialcommand.h"

#include <algorithm>

namespace mirn::zelchip {

namespace {

constexpr QChar Backslash = QLatin1Char('\\');
constexpr QChar Newline = QLatin1Char('\n');
constexpr QChar Quote = QLatin1Char('"');
constexpr QChar OpenBrace = QLatin1Char('{');
constexpr QChar CloseBrace = QLatin1Char('}');
constexpr QChar OpenBracket = QLatin1Char('[');
constexpr QChar CloseBracket = QLatin1Char(']');

// Reads a script to its end and keeps one level for each open bracket and brace.
class Scanner final
{
public:
    explicit Scanner(const QString& script)
        : m_script(script)
    { }

    [[nodiscard]] std::vector<PartialCommand> scan();

private:
    struct Level
    {
        QChar closer; // null for the script itself
        int begin = 0; // offset of its content
        PartialCommand command;
        bool isInWord = false;
        bool isInQuotes = false;
    };

    [[nodiscard]] Level& level() { return m_levels.back(); }
    void step();
    void takeEscape();
    void takeBraces();
    void open(QChar closer);
    void closeBracket();
    void take(QChar character);
    void beginWord(int start);
    void beginWord() { beginWord(m_at); }
    void endWord();
    void endCommand();
    [[nodiscard]] int matchingBrace() const;

    const QString& m_script;
    int m_at = 0;
    std::vector<Level> m_levels;
};

std::vector<PartialCommand> Scanner::scan()
{
    m_levels.push_back({});
    while (m_at < m_script.size())
        step();
    if (!level().isInWord)
        level().command.start = m_at;
    std::vector<PartialCommand> readings{level().command};
    for (std::size_t i = m_levels.size() - 1; m_levels[i].closer == CloseBrace; --i) {
        readings.push_back(m_levels[i - 1].command);
        readings.back().word = m_script.mid(m_levels[i].begin);
    }
    std::reverse(readings.begin(), readings.end());
    return readings;
}

void Scanner::step()
{
    const QChar character = m_script.at(m_at);
    const bool isInQuotes = level().isInQuotes;
    if (character == Backslash)
        takeEscape();
    else if (character == OpenBracket)
        open(CloseBracket);
    else if (isInQuotes && character == Quote)
        level().isInQuotes = false;
    else if (isInQuotes)
        take(character);
    else if (character == CloseBracket && level().closer == CloseBracket)
        closeBracket();
    else if (character == Newline || character == QLatin1Char(';'))
        endCommand();
    else if (character.isSpace())
        endWord();
    else if (!level().isInWord && character == OpenBrace)
        takeBraces();
    else if (!level().isInWord && character == Quote) {
        beginWord();
        level().isInQuotes = true;
    } else
        take(character);
    ++m_at;
}

// A backslash at the end of a line continues the command and is not part of a word.
void Scanner::takeEscape()
{
    if (++m_at < m_script.size() && m_script.at(m_at) == Newline && !level().isInQuotes) {
        endWord();
        return;
    }
    beginWord(m_at - 1);
    level().command.word += m_script.mid(m_at, 1);
}

void Scanner::takeBraces()
{
    const int end = matchingBrace();
    if (end < 0) {
        open(CloseBrace);
        return;
    }
    beginWord();
    level().command.word += m_script.mid(m_at + 1, end - m_at - 1);
    m_at = end;
}

void Scanner::open(QChar closer)
{
    beginWord();
    Level inner;
    inner.closer = closer;
    inner.begin = m_at + 1;
    m_levels.push_back(inner);
}

// The result of a command in brackets is unknown, so its text stands for it.
void Scanner::closeBracket()
{
    const int begin = level().begin;
    m_levels.pop_back();
    level().command.word += m_script.mid(begin - 1, m_at + 1 - (begin - 1));
}

void Scanner::take(QChar character)
{
    beginWord();
    level().command.word += character;
}

void Scanner::beginWord(int start)
{
    if (level().isInWord)
        return;
    level().isInWord = true;
    level().command.start = start;
}

void Scanner::endWord()
{
    if (!level().isInWord)
        return;
    level().isInWord = false;
    level().command.words.append(level().command.word);
    level().command.word.clear();
}

void Scanner::endCommand()
{
    level().isInWord = false;
    level().command = {};
}

// Returns the brace that closes the one at the current position, -1 if none does. Between them only braces count.
int Scanner::matchingBrace() const
{
    int depth = 0;
    for (int i = m_at; i < m_script.size(); ++i) {
        const QChar character = m_script.at(i);
        if (character == Backslash)
            ++i;
        else if (character == OpenBrace)
            ++depth;
        else if (character == CloseBrace && --depth == 0)
            return i;
    }
    return -1;
}

} // namespace

std::vector<PartialCommand> partialCommands(const QString& script)
{
    return Scanner(script).scan();
}

} // namespace mirn::zelchip
