// SPDX-License-Identifier: MIT
#pragma once

#include "engine/design.h"
#include "engine/placementrules.h"
#include "engine/settingstore.h"
#include "host/design/journal.h"
#include "host/design/journalreader.h"
#include "host/tcl/tclinterpreter.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUndoStack>

#include <optional>
#include <vector>

namespace mirn::zelengine {
class ReferenceEngine;
}

namespace mirn::zelchip {

// The one way to change the design: asks the engine, keeps each accepted change in the journal before it answers, and
// can take it back. What cannot be kept is refused, also because another program is changing the project. Knows no
// widget.
//
// Every operation gives an empty text for success, else one sentence for people that says why nothing changed.
class DesignEditor final : public QObject
{
    Q_OBJECT
public:
    // Neither is owned by the other: the engine must outlive the editor. Nothing is written into the directory before
    // the first change.
    DesignEditor(zelengine::ReferenceEngine& engine, const QString& implementationDirectory, QObject* parent = nullptr,
        FileLayer& files = FileLayer::system());
    ~DesignEditor() override;

    // Brings back what was saved, then what the journal holds. To be called once, before any change. `command`
    // carries out the lines: changeCommand() of this editor. Returns what a user should know of it; empty when there
    // was nothing to say.
    [[nodiscard]] QStringList recover(const TclInterpreter::Command& command);

    QString place(const QString& resource, int site);
    QString reset(const QString& resource);
    QString remove(const QString& resource);
    QString restore(const QString& resource);
    QString configure(const QString& resource, const QString& key, const QString& value);
    QString setSetting(int site, const QString& key, const QString& value);

    QString undo();
    QString redo();

    // Writes the placements and settings and starts a new journal.
    QString save();

    // Forgets what changed since the last save, for a design that is about to be closed: the journal is emptied, the
    // engine is left as it is.
    QString discard();

    // Why a lock stands in the project of which this machine cannot tell whether it is still of use, or something that
    // is no lock; empty: nothing does. takeOver() removes it, which is for people to decide; empty on success.
    [[nodiscard]] QString lockInDoubt() { return m_journal.lock().doubt(); }
    [[nodiscard]] QString takeOver() { return m_journal.lock().takeOver(); }

    // Whether anything changed since the last save.
    [[nodiscard]] bool isModified() const { return !m_undoStack.isClean() || m_hasUnsavedPast; }

    // For its signals and texts; to be changed through undo() and redo() only.
    [[nodiscard]] const QUndoStack& undoStack() const { return m_undoStack; }
    [[nodiscard]] zelengine::ReferenceEngine& engine() const { return m_engine; }
    [[nodiscard]] QString placementFile() const;

Q_SIGNALS:
    // After each change, undo, redo and save.
    void changed();

    // A setting that the chip view wrote was refused; the view itself does not look at the answer.
    void settingRefused(const QString& reason);

private:
    // No larger than what it is about, so that a long history costs no more than its changes.
    struct Change;
    class ChangeCommand;

    QString writeSetting(int site, const QString& key, const QString& value);
    QString changeSites(const QString& text, const QString& command, const zelengine::Proposal& proposal);
    QString commit(const Change& change, const QString& command);
    void apply(const Change& change, bool isForward);
    [[nodiscard]] QStringList commandsFor(const Change& change, bool isForward) const;
    [[nodiscard]] QString path(int resource) const;
    QString step(int index, bool isForward);
    [[nodiscard]] QString claim();
    [[nodiscard]] QString claimAgain();
    QString keep(const QStringList& commands);
    [[nodiscard]] QString keepSaved();
    [[nodiscard]] QByteArray savedContent() const;
    void push(std::vector<Change> changes);
    enum class GroupEnd { Kept, TakenBack };
    void endGroup(GroupEnd end);

    // What was read from a file of commands.
    struct Replay;
    struct FilePart
    {
        qint64 begin; // in bytes
        qint64 end;
    };
    [[nodiscard]] Replay replay(const TclInterpreter::Command& command, const QString& fileName, qint64 from = 0);
    [[nodiscard]] QString makeAgain(const JournalReader::Change& change, const TclInterpreter::Command& command);
    void replaySaved(const TclInterpreter::Command& command, QStringList& messages);
    void replayJournal(const TclInterpreter::Command& command, QStringList& messages);
    [[nodiscard]] qint64 partOfJournalHeld() const;
    [[nodiscard]] static std::optional<QByteArray> partsOf(const QString& fileName, const std::vector<FilePart>& parts);
    [[nodiscard]] QString mendJournal(const std::vector<FilePart>& kept);

    zelengine::ReferenceEngine& m_engine;
    const QString m_directory;
    FileLayer& m_files;
    QByteArray m_savedHash; // of the placement file
    bool m_isSavedKept = true; // what the placement file holds is in the design, or in another file beside it
    Journal m_journal;
    QUndoStack m_undoStack;
    zelengine::Design m_pristine; // as the design file has it
    bool m_isReplaying = false;
    std::vector<Change> m_remade; // of the commands that count together, while they are made again
    bool m_isClaimed = false; // no other program changes the project
    bool m_hasUnsavedPast = false;
};

} // namespace mirn::zelchip
