// SPDX-License-Identifier: MIT
// The part of the editor that runs once, when a project opens: it brings back the saved state and replays the journal.
#include "host/design/designeditor.h"

#include "engine/input/inputfile.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace mirn::zelchip {

namespace {

// A file that is no journal at all would fill the message list with refusals.
constexpr int MostRefusalsTold = 20;
constexpr std::size_t MostBytesTold = 160;

// Lines that begin with neither need no closer look, which keeps large files of something else fast.
constexpr std::string_view CommandStarts[] = {"zel_resource ", "zel_setting "};

// Returns the beginning of a text that may contain anything, fit to be shown.
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
    return !change.lines.empty()
        && std::any_of(std::begin(CommandStarts), std::end(CommandStarts),
            [&](std::string_view start) { return change.lines.front().compare(0, start.size(), start) == 0; });
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

    [[nodiscard]] bool isAllMade() const { return refused == 0 && !isTruncated; }

    QString error; // why the file could not be read; empty if it was, or if there is none
    qint64 size = 0; // bytes that were read
    QByteArray hash; // SHA-256 of these bytes, hexadecimal
    bool isTruncated = false;
    int incompleteChangeLine = 0; // where the change begins that the end of the file cuts off; 0 if there is none
    qint64 accepted = 0; // number of changes
    qint64 refused = 0;
    QStringList refusals; // the first of them, as messages
    std::vector<FilePart> kept; // the accepted changes, as ranges of bytes
};

QStringList DesignEditor::recover(const TclInterpreter::Command& command)
{
    QStringList messages;
    m_isReplaying = true;
    // The lock keeps others from saving between the reading of the two files. Without it the two may not fit together;
    // claim() detects that before this program changes anything.
    if (entryExists(placementFile()) || entryExists(m_journal.fileName()))
        (void)m_journal.lock().claim();
    replaySaved(command, messages);
    m_undoStack.clear(); // undo goes back to the saved state, no further
    replayJournal(command, messages);
    m_isReplaying = false;
    if (!m_isClaimed)
        m_journal.release(); // knows what was read
    Q_EMIT changed();
    return messages;
}

QString DesignEditor::read(const TclInterpreter::Command& command, const QString& fileName)
{
    m_isReplaying = true;
    const Replay placement = replay(command, fileName);
    m_isReplaying = false;
    if (!placement.error.isEmpty())
        return tr("%1 cannot be read: %2").arg(fileName, placement.error);
    if (!placement.refusals.isEmpty())
        return placement.refusals.first();
    return placement.isTruncated ? tr("%1: the last line is cut off").arg(fileName) : QString();
}

// Replays the changes of a file that begin at the offset `from` (in bytes) or after it.
DesignEditor::Replay DesignEditor::replay(const TclInterpreter::Command& command, const QString& fileName, qint64 from)
{
    Replay result;
    JournalReader reader(m_files);
    if (!entryExists(fileName) || !reader.open(fileName, &result.error)) {
        result.hash = hashOfFile(fileName, 0);
        return result;
    }
    JournalReader::Change change;
    while (reader.next(change)) {
        if (change.begin < from)
            continue;
        const bool isTold = result.refused < MostRefusalsTold;
        const QString refusal
            = isTold || beginsWithCommand(change) ? replayChange(change, command) : QStringLiteral("?");
        if (refusal.isEmpty())
            result.keep(change);
        else if (++result.refused <= MostRefusalsTold)
            result.refusals.append(tr("%1:%2: refused %3").arg(fileName, QString::number(change.line), refusal));
    }
    if (result.refused > MostRefusalsTold)
        result.refusals.append(
            tr("%1: refused %2 more").arg(fileName, QString::number(result.refused - MostRefusalsTold)));
    result.error = reader.error();
    result.size = reader.size();
    result.hash = reader.hash();
    result.isTruncated = reader.isTruncated();
    result.incompleteChangeLine = reader.incompleteChangeLine();
    return result;
}

// Carries out all commands of a change or none. The lines are split as lists of words: nothing in them is evaluated.
QString DesignEditor::replayChange(const JournalReader::Change& change, const TclInterpreter::Command& command)
{
    const QString first = change.lines.empty() ? QString() : excerpt(change.lines.front());
    if (!change.isWhole)
        return tr("%1 (not all commands of this change are there)").arg(first);
    if (change.isTooLong)
        return tr("%1 (the line is longer than any command)").arg(first);
    for (const std::string& line : change.lines) {
        if (line.find('\0') != std::string::npos) {
            endGroup(GroupEnd::RolledBack);
            return tr("%1 (the line is no text)").arg(excerpt(line));
        }
        const auto words = TclInterpreter::words(QString::fromUtf8(line.data(), static_cast<int>(line.size())));
        const TclResult result = words ? command(*words) : TclResult::error(tr("the line is no list of words"));
        if (result.isOk)
            continue;
        endGroup(GroupEnd::RolledBack);
        return tr("%1 (%2)").arg(excerpt(line), excerpt(result.text));
    }
    endGroup(GroupEnd::Kept);
    return {};
}

void DesignEditor::replaySaved(const TclInterpreter::Command& command, QStringList& messages)
{
    const Replay saved = replay(command, placementFile());
    m_savedHash = saved.hash;
    m_journal.setBase(journalformat::baseLine(m_savedHash));
    if (!saved.error.isEmpty()) {
        const QString reason = tr("%1 cannot be read: %2").arg(placementFile(), saved.error);
        messages.append(reason);
        m_journal.refuse(reason); // without the saved state, the changes that follow it cannot be judged
    }
    if (saved.isTruncated)
        messages.append(tr("%1: the last line is cut off and was not read.").arg(placementFile()));
    messages += saved.refusals;
    m_isPlacementFilePreserved = saved.isAllMade();
    if (m_isPlacementFilePreserved || !saved.error.isEmpty())
        return;
    // Saving would lose the commands that no longer fit the design, so the project counts as modified.
    m_hasUnsavedPast = true;
    messages.append(tr("The next save keeps the file as it is under another name."));
}

// Returns how many bytes at the journal's beginning are contained in the placement file already; -1 if the journal
// follows another saved state.
qint64 DesignEditor::savedJournalBytes() const
{
    const QString& name = m_journal.fileName();
    const QByteArray base = JournalReader::baseOf(name);
    if (base == m_savedHash)
        return 0;
    const journalformat::Checkpoint holding = JournalReader::checkpointOf(placementFile());
    if (holding.size > 0 && QFileInfo(name).size() >= holding.size && hashOfFile(name, holding.size) == holding.hash)
        return holding.size;
    return base.isEmpty() ? 0 : -1;
}

void DesignEditor::replayJournal(const TclInterpreter::Command& command, QStringList& messages)
{
    if (m_journal.isDisabled())
        return;
    const QString& name = m_journal.fileName();
    const qint64 held = savedJournalBytes();
    const Replay journal = held < 0 ? Replay() : replay(command, name, held);
    if (!journal.error.isEmpty()) {
        messages.append(tr("%1 cannot be read: %2").arg(name, journal.error));
        m_journal.refuse(tr("the change cannot be kept in %1: %2").arg(name, journal.error));
        return;
    }
    if (held < 0) {
        m_journal.expect(QFileInfo(name).size(), hashOfFile(name));
        messages.append(tr("%1 belongs to another state of %2 and was not used. %3")
                            .arg(name, placementFile(), rewriteJournal({})));
        return;
    }
    m_journal.expect(journal.size, journal.hash);
    if (held > 0 && journal.size == held)
        m_journal.markSaved();
    QStringList faults = journal.refusals;
    if (journal.incompleteChangeLine > 0)
        faults.prepend(tr("%1:%2: the last change was cut off; it was never confirmed, or this line is damaged, and is "
                          "dropped.")
                           .arg(name, QString::number(journal.incompleteChangeLine)));
    else if (journal.isTruncated)
        faults.prepend(
            tr("The last line of %1 was cut off; the change in it was never confirmed and is dropped.").arg(name));
    messages += faults;
    if (!faults.isEmpty())
        messages.append(rewriteJournal(journal.kept));
    if (journal.accepted == 1)
        messages.append(tr("1 change that was not saved is back."));
    else if (journal.accepted > 1)
        messages.append(tr("%1 changes that were not saved are back.").arg(journal.accepted));
}

// Returns nothing unless all parts can be read.
std::optional<QByteArray> DesignEditor::partsOf(const QString& fileName, const std::vector<FilePart>& parts)
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

// Replaces the journal by one of the accepted changes, unless another program may be changing the project. Returns a
// message for the user.
QString DesignEditor::rewriteJournal(const std::vector<FilePart>& kept)
{
    QString name;
    const QString error = claim();
    const std::optional<QByteArray> content = kept.empty() ? QByteArray() : partsOf(m_journal.fileName(), kept);
    if (!error.isEmpty())
        m_journal.block(error);
    else if (!content)
        m_journal.block(tr("%1 cannot be read again").arg(m_journal.fileName()));
    else
        name
            = m_journal.replaceKeepingBackup(kept.empty() ? *content : journalformat::baseLine(m_savedHash) + *content);
    return name.isEmpty() ? tr("No change is accepted: %1").arg(m_journal.appendError())
                          : tr("The journal as it was is kept as %1.").arg(name);
}

} // namespace mirn::zelchip
