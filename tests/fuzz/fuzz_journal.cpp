// SPDX-License-Identifier: MIT

// Reads the input as a journal, and writes what is whole of it into another one, from which the same must come back.

#include "host/design/journal.h"
#include "host/design/journalreader.h"
#include "host/tcl/tclinterpreter.h"
#include "tests/fuzz/inputfile.h"

#include <algorithm>

using mirn::zelchip::Journal;
using mirn::zelchip::JournalReader;
using mirn::zelchip::TclInterpreter;

using zelfuzz::check;

namespace {

using Change = JournalReader::Change;

std::vector<Change> changesIn(const QString& fileName, qint64 size)
{
    JournalReader reader;
    QString error;
    check(reader.open(fileName, &error));
    std::vector<Change> changes;
    Change change;
    qint64 end = 0;
    while (reader.next(change)) {
        if (change.isWhole) {
            check(!change.lines.empty() && change.begin >= end && change.begin < change.end && change.end <= size);
            end = change.end;
        }
        changes.push_back(change);
        for (const std::string& line : change.lines)
            (void)TclInterpreter::words(QString::fromUtf8(line.data(), static_cast<int>(line.size())));
    }
    check(reader.size() == size);
    return changes;
}

// The program writes commands as texts, one line each.
bool canBeWritten(const Change& change)
{
    return change.isWhole && !change.isTooLong
        && std::all_of(change.lines.begin(), change.lines.end(),
            [](const std::string& line) { return QString::fromStdString(line).toStdString() == line; });
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QString input = zelfuzz::inputFile("journal.tcl", reinterpret_cast<const char*>(data), size);
    const std::vector<Change> read = changesIn(input, static_cast<qint64>(size));
    (void)JournalReader::baseOf(input);
    (void)JournalReader::checkpointOf(input);

    const QString name = zelfuzz::inputFile("again.tcl", nullptr, 0);
    std::vector<Change> written;
    {
        Journal journal(name);
        for (const Change& change : read) {
            QStringList commands;
            for (const std::string& line : change.lines)
                commands.append(QString::fromStdString(line));
            if (!canBeWritten(change))
                continue;
            check(journal.append(commands).isEmpty());
            written.push_back(change);
        }
    }
    const std::vector<Change> again = changesIn(name, QFile(name).size());
    check(again.size() == written.size());
    for (std::size_t i = 0; i < written.size(); ++i)
        check(again[i].isWhole && again[i].lines == written[i].lines);
    return 0;
}
