// SPDX-License-Identifier: MIT
// What the editor does once, when a project opens: it brings back what was saved and what the journal holds.
#include "host/design/designeditor.h"

#include "host/tcl/designtcl.h"
#include "host/tcl/tclinterpreter.h"

#include <utility>

namespace mirn::zelchip {

namespace {

// Of a file that is no journal at all nobody wants to read every line.
constexpr int MostRefusalsTold = 20;
constexpr int MostCharactersTold = 160;

// Some of a text that may be anything.
QString excerpt(QString text)
{
    if (text.size() > MostCharactersTold)
        text = text.left(MostCharactersTold) + QStringLiteral("...");
    for (QChar& character : text) {
        if (!character.isPrint())
            character = QLatin1Char('?');
    }
    return text;
}

} // namespace

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

// Leaves those that were accepted; gives what there is to say of the others.
QStringList DesignEditor::replay(const QString& fileName, std::vector<Journal::Change>& changes)
{
    TclInterpreter interpreter(TclInterpreter::Vocabulary::AddedOnly);
    addChangeCommands(interpreter, *this);
    QStringList refusals;
    std::vector<Journal::Change> accepted;
    for (Journal::Change& change : changes) {
        const QString refusal = replay(interpreter, change);
        if (refusal.isEmpty())
            accepted.push_back(std::move(change));
        else
            refusals.append(tr("%1:%2: refused %3").arg(fileName, QString::number(change.line), refusal));
    }
    changes = std::move(accepted);
    const auto untold = refusals.size() - MostRefusalsTold;
    if (untold > 0)
        refusals = refusals.mid(0, MostRefusalsTold)
            + QStringList(tr("%1: refused %2 more").arg(fileName, QString::number(untold)));
    return refusals;
}

// All of its commands or none.
QString DesignEditor::replay(TclInterpreter& interpreter, const Journal::Change& change)
{
    if (!change.isWhole)
        return tr("%1 (not all commands of this change are there)").arg(excerpt(change.commands.value(0)));
    const int before = m_undoStack.index();
    for (const QString& command : change.commands) {
        const TclResult result = interpreter.evaluate(command);
        if (result.isOk)
            continue;
        while (m_undoStack.index() > before)
            m_undoStack.undo();
        return tr("%1 (%2)").arg(excerpt(command), excerpt(result.text));
    }
    return {};
}

void DesignEditor::replaySaved(QStringList& messages)
{
    Journal saved(placementFile());
    Journal::Content content = saved.read();
    if (!content.error.isEmpty())
        messages.append(content.error);
    if (content.hasTornEnd)
        messages.append(tr("%1: the last line is cut off and was not read.").arg(placementFile()));
    m_savedState = content.bytes;
    m_journal.startsAfter(m_savedState);
    const QStringList refusals = replay(placementFile(), content.changes);
    messages += refusals;
    if (refusals.isEmpty())
        return;
    // The next save would forget what does not fit the design any more.
    m_hasUnsavedPast = true;
    const QString copy = saved.copyAside();
    if (!copy.isEmpty())
        messages.append(tr("The file as it was is kept as %1.").arg(copy));
}

void DesignEditor::replayJournal(QStringList& messages)
{
    Journal::Content content = m_journal.read();
    if (!content.error.isEmpty()) {
        messages.append(content.error);
        return;
    }
    if (content.isForeign) {
        messages.append(tr("%1 belongs to another state of %2 and was not used. %3")
                            .arg(m_journal.fileName(), placementFile(), whereJournalIsKept(m_journal.setAside())));
        return;
    }
    const QStringList refusals = replay(m_journal.fileName(), content.changes);
    if (content.hasTornEnd)
        messages.append(dropTornEnd(content, refusals.isEmpty()));
    messages += refusals;
    if (!refusals.isEmpty())
        messages.append(rewriteJournal(content.changes));
    if (content.changes.size() == 1)
        messages.append(tr("1 change that was not saved is back."));
    else if (!content.changes.empty())
        messages.append(tr("%1 changes that were not saved are back.").arg(content.changes.size()));
}

QString DesignEditor::dropTornEnd(const Journal::Content& content, bool mayCut)
{
    QString message = tr("The last line of %1 was cut off; the change in it was never confirmed and is dropped.")
                          .arg(m_journal.fileName());
    if (!mayCut)
        return message; // it goes with the rest that is not rewritten
    const QString copy = m_journal.copyAside();
    if (!copy.isEmpty())
        message += QLatin1Char(' ') + whereJournalIsKept(copy);
    const QString obstacle = m_journal.cut(content.wholeSize);
    return obstacle.isEmpty() ? message : message + QLatin1Char(' ') + obstacle;
}

// A new journal of what was accepted.
QString DesignEditor::rewriteJournal(const std::vector<Journal::Change>& changes)
{
    const QString kept = m_journal.setAside();
    QString obstacle;
    for (const Journal::Change& change : changes) {
        if (obstacle.isEmpty())
            obstacle = m_journal.append(change.commands);
    }
    return obstacle.isEmpty() ? whereJournalIsKept(kept) : obstacle;
}

QString DesignEditor::whereJournalIsKept(const QString& name) const
{
    return name.isEmpty() ? tr("Nothing can be changed: %1.").arg(m_journal.blockage())
                          : tr("The journal as it was is kept as %1.").arg(name);
}

} // namespace mirn::zelchip
