// SPDX-License-Identifier: MIT

// Reads the input as a journal, and writes what is whole of it into another one, from which the same must come back.
// Run it with tests/fuzz/corpus/journal as its corpus.

#include "host/design/journal.h"
#include "host/tcl/tclinterpreter.h"
#include "tests/fuzz/inputfile.h"

#include <algorithm>

using mirn::zelchip::Journal;
using mirn::zelchip::TclInterpreter;

namespace {

void check(bool isRight)
{
    if (!isRight)
        std::abort();
}

// A command as the program writes them: one line, complete, and no comment.
bool canBeWritten(const QString& command)
{
    return !command.startsWith(QLatin1Char('#')) && !command.trimmed().isEmpty() && !command.contains(QLatin1Char('\n'))
        && TclInterpreter::isComplete(command + QLatin1Char('\n'));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    Journal::Content content
        = Journal(zelfuzz::inputFile("journal.tcl", reinterpret_cast<const char*>(data), size)).read();
    check(content.error.isEmpty() && content.bytes.size() == static_cast<qsizetype>(size));
    check(content.wholeSize <= content.bytes.size());
    check(content.hasTornEnd || content.wholeSize == content.bytes.size());

    const QString name = zelfuzz::inputFile("again.tcl", nullptr, 0);
    std::vector<QStringList> written;
    {
        Journal journal(name);
        for (const Journal::Change& change : content.changes) {
            const bool isWritten
                = change.isWhole && std::all_of(change.commands.begin(), change.commands.end(), canBeWritten);
            if (!isWritten)
                continue;
            check(journal.append(change.commands).isEmpty());
            written.push_back(change.commands);
        }
    }
    const Journal::Content again = Journal(name).read();
    check(!again.isForeign && !again.hasTornEnd && again.changes.size() == written.size());
    for (std::size_t i = 0; i < written.size(); ++i)
        check(again.changes[i].isWhole && again.changes[i].commands == written[i]);
    return 0;
}
