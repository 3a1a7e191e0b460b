// SPDX-License-Identifier: MIT
// What the editor does once, when a project opens: it brings back what was saved and what the journal holds.
#include "host/design/designeditor.h"

#include "engine/inputfile.h"
#include "host/tcl/designtcl.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace mirn::zelchip {

namespace {

// Of a file that is no journal at all nobody wants to read every line.
constexpr int MostRefusalsTold = 20;
constexpr std::size_t MostBytesTold = 160;

// What every command begins with: of a file of something else most lines need no closer look.
constexpr std::string_view CommandStart = "zel_";

// Some of a text that may be anything.
QString excerpt(std::string_view text)
{
    QString result = QString::fromUtf8(text.data(), static_cast<int>(std::min(text.size(), MostBytesTold)));
    if (text.size() > MostBytesTold)
        result += QStringLiteral("...");
    for (QChar& character : result) {
        if (!character.isPrint())
            character = QLatin1Char('?');
    }
    return result;
}

QString excerpt(const QString& text)
{
    const QByteArray bytes = text.toUtf8();
    return excerpt(std::string_view(bytes.constData(), static_cast<std::size_t>(bytes.size())));
}

bool beginsWithCommand(const JournalReader::Change& change)
{
    return !change.lines.empty() && change.lines.front().compare(0, CommandStart.size(), CommandStart) == 0;
}

struct FilePart
{
    qint64 begin; // in bytes
    qint64 end;
};

// Nothing when not all of it can be read.
std::optional<QByteArray> partsOf(const QString& fileName, const std::vector<FilePart>& parts)
{
    QString error;
    QFile file;
    const int descriptor = zelengine::openInputFile(fileName, LargestJournal, &error);
    if (descriptor < 0 || !file.open(descriptor, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle))
        return std::nullopt;
    QByteArray result;
    for (const FilePart& part : parts) {
        const QByteArray bytes = file.seek(part.begin) ? file.read(part.end - part.begin) : QByteArray();
        if (bytes.size() != part.end - part.begin)
            return std::nullopt;
        result += bytes;
    }
    return result;
}

} // namespace

struct DesignEditor::Replay
{
    void keep(const JournalReader::Change& change)
    {
        ++accepted;
        if (!kept.empty() && kept.back().end == change.begin)
            kept.back().end = change.end;
        else
            kept.push_back({change.begin, change.end});
    }

    [[nodiscard]] bool isAllMade() const { return refused == 0 && !hasTornEnd; }

    QString error; // why the file could not be read; empty also when there is none
    qint64 size = 0; // of the file
    bool hasTornEnd = false;
    qint64 accepted = 0; // changes
    qint64 refused = 0;
    QStringList refusals; // of some of them
    std::vector<FilePart> kept; // the bytes of those that were accepted
};

QStringList DesignEditor::recover()
{
    QStringList messages;
    m_isReplaying = true;
    replaySaved(messages);
    m_undoStack.clear(); // what was saved is where this session starts
    replayJournal(messages);
    m_isReplaying = false;
    Q_EMIT changed();
    return messages;
}

// Makes the changes in a file again, of those that begin at `from` or behind it.
DesignEditor::Replay DesignEditor::replay(const QString& fileName, qint64 from)
{
    Replay result;
    JournalReader reader;
    const QFileInfo file(fileName);
    if ((!file.exists() && !file.isSymLink()) || !reader.open(fileName, &result.error))
        return result;
    const TclInterpreter::Command command = changeCommand(*this);
    JournalReader::Change change;
    while (reader.next(change)) {
        if (change.begin < from)
            continue;
        const bool isTold = result.refused < MostRefusalsTold;
        const QString refusal = isTold || beginsWithCommand(change) ? makeAgain(change, command) : QStringLiteral("?");
        if (refusal.isEmpty())
            result.keep(change);
        else if (++result.refused <= MostRefusalsTold)
            result.refusals.append(tr("%1:%2: refused %3").arg(fileName, QString::number(change.line), refusal));
    }
    if (result.refused > MostRefusalsTold)
        result.refusals.append(
            tr("%1: refused %2 more").arg(fileName, QString::number(result.refused - MostRefusalsTold)));
    result.size = reader.size();
    result.hasTornEnd = reader.hasTornEnd();
    return result;
}

// All of its commands or none. They are lists of words: nothing in them is evaluated.
QString DesignEditor::makeAgain(const JournalReader::Change& change, const TclInterpreter::Command& command)
{
    const QString first = change.lines.empty() ? QString() : excerpt(change.lines.front());
    if (!change.isWhole)
        return tr("%1 (not all commands of this change are there)").arg(first);
    if (change.isTooLong)
        return tr("%1 (the line is longer than any command)").arg(first);
    for (const std::string& line : change.lines) {
        const auto words = TclInterpreter::words(QString::fromUtf8(line.data(), static_cast<int>(line.size())));
        const TclResult result = words ? command(*words) : TclResult::error(tr("the line is no list of words"));
        if (result.isOk)
            continue;
        endGroup(GroupEnd::TakenBack);
        return tr("%1 (%2)").arg(excerpt(line), excerpt(result.text));
    }
    endGroup(GroupEnd::Kept);
    return {};
}

void DesignEditor::replaySaved(QStringList& messages)
{
    const Replay saved = replay(placementFile());
    m_savedHash = hashOfFile(placementFile());
    m_journal.startsAfter(journalformat::baseLine(m_savedHash));
    if (!saved.error.isEmpty())
        messages.append(tr("%1 cannot be read: %2").arg(placementFile(), saved.error));
    if (saved.hasTornEnd)
        messages.append(tr("%1: the last line is cut off and was not read.").arg(placementFile()));
    messages += saved.refusals;
    m_isSavedKept = saved.error.isEmpty() && saved.isAllMade();
    if (m_isSavedKept)
        return;
    // The next save would forget what does not fit the design any more.
    m_hasUnsavedPast = true;
    messages.append(tr("The next save keeps the file as it is under another name."));
}

// How much of the journal's beginning the placement file holds already; -1 when the journal follows another state.
qint64 DesignEditor::partOfJournalHeld() const
{
    const QString& name = m_journal.fileName();
    const QByteArray base = JournalReader::baseOf(name);
    if (base.isEmpty() || base == journalformat::baseLine(m_savedHash))
        return 0;
    const journalformat::Holding holding = JournalReader::holdingOf(placementFile());
    const bool isHeld
        = holding.size > 0 && QFileInfo(name).size() >= holding.size && hashOfFile(name, holding.size) == holding.hash;
    return isHeld ? holding.size : -1;
}

void DesignEditor::replayJournal(QStringList& messages)
{
    const qint64 held = partOfJournalHeld();
    if (held < 0) {
        m_journal.expect(QFileInfo(m_journal.fileName()).size(), false);
        messages.append(tr("%1 belongs to another state of %2 and was not used. %3")
                            .arg(m_journal.fileName(), placementFile(), whereJournalIsKept(m_journal.setAside())));
        return;
    }
    const Replay journal = replay(m_journal.fileName(), held);
    if (!journal.error.isEmpty()) {
        m_journal.refuse(journal.error);
        messages.append(tr("%1 cannot be read: %2").arg(m_journal.fileName(), journal.error));
        return;
    }
    m_journal.expect(journal.size, journal.size > 0 && journal.size == held);
    QStringList faults = journal.refusals;
    if (journal.hasTornEnd)
        faults.prepend(tr("The last line of %1 was cut off; the change in it was never confirmed and is dropped.")
                           .arg(m_journal.fileName()));
    messages += faults;
    if (!faults.isEmpty())
        messages.append(mendJournal(journal));
    if (journal.accepted == 1)
        messages.append(tr("1 change that was not saved is back."));
    else if (journal.accepted > 1)
        messages.append(tr("%1 changes that were not saved are back.").arg(journal.accepted));
}

// A new journal of what was accepted.
QString DesignEditor::mendJournal(const Replay& replay)
{
    QByteArray content;
    if (!replay.kept.empty()) {
        const std::optional<QByteArray> kept = partsOf(m_journal.fileName(), replay.kept);
        if (!kept)
            return tr("%1 cannot be mended, for it changes.").arg(m_journal.fileName());
        content = journalformat::baseLine(m_savedHash) + *kept;
    }
    return whereJournalIsKept(m_journal.setAsideFor(content));
}

QString DesignEditor::whereJournalIsKept(const QString& name) const
{
    return name.isEmpty() ? tr("Nothing can be changed: %1.").arg(m_journal.blockage())
                          : tr("The journal as it was is kept as %1.").arg(name);
}

} // namespace mirn::zelchip
