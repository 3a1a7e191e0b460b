// SPDX-License-Identifier: MIT
#include "host/console/partialcommand.h"

#include <QByteArray>

#include <tcl.h>

namespace mirn::zelchip {

namespace {

// Reads the end of a script with Tcl's own parser, which says where a brace, bracket or quote is open but keeps nothing
// of the command around it. What stands before that place is therefore parsed once more.
class PartialReader final
{
public:
    explicit PartialReader(const QString& script)
        : m_bytes(script.toUtf8())
    { }

    [[nodiscard]] std::vector<PartialCommand> read() const;

private:
    [[nodiscard]] PartialCommand lastCommand(int begin, int end, std::vector<int>& opened) const;
    [[nodiscard]] PartialCommand commandOf(const Tcl_Parse& parse, int end) const;
    [[nodiscard]] PartialCommand withQuotedWord(PartialCommand command, int quote) const;
    [[nodiscard]] int offsetOf(const char* position) const { return static_cast<int>(position - m_bytes.constData()); }
    [[nodiscard]] int characters(int bytes) const { return static_cast<int>(text(0, bytes).size()); }
    [[nodiscard]] QString text(int begin, int end) const { return QString::fromUtf8(m_bytes.mid(begin, end - begin)); }

    const QByteArray m_bytes; // all offsets are in here
};

QString textOf(const Tcl_Token& token)
{
    char character[TCL_UTF_MAX + 1] = {};
    if (token.type == TCL_TOKEN_BS)
        return QString::fromUtf8(character, Tcl_UtfBackslash(token.start, nullptr, character));
    return QString::fromUtf8(token.start, token.size);
}

// The result of a variable or of a command in brackets is unknown, so its text stands for it.
QString textOfWord(const Tcl_Token* word)
{
    QString result;
    for (const Tcl_Token* part = word + 1; part <= word + word->numComponents; part += 1 + part->numComponents)
        result += textOf(*part);
    return result;
}

std::vector<PartialCommand> PartialReader::read() const
{
    std::vector<PartialCommand> readings;
    const int size = static_cast<int>(m_bytes.size());
    for (int begin = 0;;) {
        std::vector<int> opened; // the innermost first
        PartialCommand command = lastCommand(begin, size, opened);
        if (opened.empty()) {
            readings.push_back(command);
            return readings;
        }
        const int outermost = opened.back();
        begin = outermost + 1;
        if (m_bytes.at(outermost) == '{') {
            command.word += text(begin, size);
            readings.push_back(command);
        } else if (m_bytes.at(outermost) == '"' && opened.size() > 1) {
            begin = opened[opened.size() - 2] + 1; // a bracket in the quotes
        } else if (m_bytes.at(outermost) == '"') {
            readings.push_back(withQuotedWord(command, outermost));
            return readings;
        }
    }
}

// Returns the last command between two offsets, up to where its outermost brace, bracket or quote is open.
PartialCommand PartialReader::lastCommand(int begin, int end, std::vector<int>& opened) const
{
    PartialCommand command;
    while (begin < end) {
        Tcl_Parse parse;
        if (Tcl_ParseCommand(nullptr, m_bytes.constData() + begin, end - begin, 0, &parse) != TCL_OK) {
            const int mistake = offsetOf(parse.term);
            if (mistake >= end)
                break;
            end = mistake;
            if (parse.incomplete)
                opened.push_back(end);
            continue;
        }
        const int next = offsetOf(parse.commandStart) + parse.commandSize;
        const char last = m_bytes.at(next - 1);
        command = commandOf(parse, end);
        const bool isEnded
            = command.word.isEmpty() && command.start == characters(end) && (last == '\n' || last == ';');
        Tcl_FreeParse(&parse);
        if (isEnded || next < end)
            command = {};
        if (next >= end)
            break;
        begin = next;
    }
    if (command.words.isEmpty() && command.word.isEmpty())
        command.start = characters(end);
    return command;
}

// A word that reaches to the end is not finished.
PartialCommand PartialReader::commandOf(const Tcl_Parse& parse, int end) const
{
    PartialCommand command;
    command.start = characters(end);
    const Tcl_Token* word = parse.tokenPtr;
    for (int i = 0; i < parse.numWords; ++i, word += 1 + word->numComponents) {
        const bool isFinished = offsetOf(word->start) + word->size < end;
        if (isFinished) {
            command.words.append(textOfWord(word));
        } else {
            command.word = textOfWord(word);
            command.start = characters(offsetOf(word->start));
        }
    }
    return command;
}

PartialCommand PartialReader::withQuotedWord(PartialCommand command, int quote) const
{
    const QByteArray closed = m_bytes.mid(quote) + '"';
    Tcl_Parse parse;
    if (Tcl_ParseCommand(nullptr, closed.constData(), static_cast<int>(closed.size()), 0, &parse) == TCL_OK) {
        command.word = parse.numWords > 0 ? textOfWord(parse.tokenPtr) : QString();
        Tcl_FreeParse(&parse);
    }
    return command;
}

} // namespace

std::vector<PartialCommand> partialCommands(const QString& script)
{
    return PartialReader(script).read();
}

} // namespace mirn::zelchip
