// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/design.h"
#include "engine/rules/lockrules.h"
#include "engine/rules/placementrules.h"
#include "engine/rules/settingstore.h"
#include "host/design/designchange.h"
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

constexpr char PlacementFile[] = "/placement.tcl"; // behind an implementation's folder

// All changes to the design go through this class. It asks the engine, writes each accepted change to the journal
// before it answers, and keeps the undo steps. It refuses a change that it cannot journal or while another program is
// changing the project. The project session owns it; it knows no widget. What brings a design back when its project is
// opened is in designeditor_recovery.cpp.
//
// An operation on files returns an empty text for success, else one sentence for users that says what failed; a change
// of the design that cannot be recorded is refused with that sentence.
class DesignEditor final : public QObject
{
    Q_OBJECT
public:
    // The editor does not own the engine, which must outlive it. It writes nothing into the directory before the first
    // change.
    DesignEditor(zelengine::ReferenceEngine& engine, const QString& implementationDirectory, QObject* parent = nullptr,
        FileLayer& files = FileLayer::system());
    ~DesignEditor() override;

    // Brings back the saved state, then the changes in the journal. Call it once, before any change. `command` carries
    // out the lines; it is the changeCommand() of this editor. Returns messages for the user, empty when there is
    // nothing to say.
    [[nodiscard]] QStringList recover(const TclInterpreter::Command& command);

    // Carries out the commands of a placement file as recover() does, but writes nothing and has no journal: for an
    // editor whose engine is a copy. Returns an empty text, or what is wrong with the first line that is not accepted.
    [[nodiscard]] QString read(const TclInterpreter::Command& command, const QString& fileName);

    zelengine::Refusal place(const QString& resource, int site);
    zelengine::Refusal reset(const QString& resource);
    // Changes the places of several resources in one step, which either happens as a whole or is refused. `text` names
    // it in the undo menu; -1 as a site takes a resource off its site. Moving what is where it should be changes
    // nothing.
    zelengine::Refusal move(const QString& text, const std::vector<zelengine::Placement>& placements);
    // Two placed resources exchange their sites, as one step.
    zelengine::Refusal swap(const QString& resource, const QString& other);
    zelengine::Refusal remove(const QString& resource);
    zelengine::Refusal restore(const QString& resource);
    // Keep a resource, and everything below it that is placed, on its site, and let it go again.
    zelengine::Refusal lock(const QString& resource);
    zelengine::Refusal unlock(const QString& resource);
    zelengine::Refusal configure(const QString& resource, const QString& key, const QString& value);
    zelengine::Refusal setSetting(int site, const QString& key, const QString& value);

    zelengine::Refusal undo();
    zelengine::Refusal redo();

    // Writes the placement file and starts a new journal.
    [[nodiscard]] QString save();

    // Forgets the changes since the last save, for a design that is about to be closed: empties the journal and leaves
    // the engine as it is.
    [[nodiscard]] QString discard();

    // Takes the project for this program until release() or the end of this object, as the first change does by itself.
    // Returns an empty text for success, else one sentence that says who has the project or why it cannot be had.
    [[nodiscard]] QString claim();
    void release();
    [[nodiscard]] bool isClaimed() const { return m_isClaimed; }
    // Whether nothing has been changed here, and what is not saved is the concern of another program, which has the
    // project or has changed it since.
    [[nodiscard]] bool isOfAnother() const;
    // Whether somebody else has changed the project's files, or taken it over, since they were read or written here.
    [[nodiscard]] bool isOutdated() const;

    // lockInDoubt() says why the user has to decide about the lock file: this machine cannot tell whether its owner
    // still runs, or it is not a lock file at all. It is empty when there is nothing to decide. takeOver() removes the
    // file; it returns an empty text for success.
    [[nodiscard]] QString lockInDoubt() { return m_journal.lock().doubt(); }
    [[nodiscard]] QString takeOver() { return m_journal.lock().takeOver(); }

    [[nodiscard]] bool isModified() const { return !m_undoStack.isClean() || m_hasUnsavedPast; }

    // Meant for its signals and texts; change it through undo() and redo() only.
    [[nodiscard]] const QUndoStack& undoStack() const { return m_undoStack; }
    [[nodiscard]] const zelengine::ReferenceEngine& engine() const { return m_engine; }
    // The design as its file has it, without any change.
    [[nodiscard]] const zelengine::Design& pristine() const { return m_pristine; }
    [[nodiscard]] QString placementFile() const;
    [[nodiscard]] const QString& journalFile() const { return m_journal.fileName(); }

Q_SIGNALS:
    // Emitted after each change, undo, redo and save, and after recover().
    void changed();

    // Emitted when a setting that the chip view wrote was refused, because the view ignores the answer.
    void settingRefused(const QString& reason);

private:
    zelengine::Refusal writeSetting(int site, const QString& key, const QString& value);
    zelengine::Refusal changeSites(const QString& text, const QString& command, const zelengine::Proposal& proposal);
    zelengine::Refusal changeLocks(const QString& text, const QString& command, zelengine::LockProposal proposal,
        std::vector<int> DesignChange::*side);
    zelengine::Refusal commit(const DesignChange& change, const QStringList& commands);
    zelengine::Refusal step(int index, bool isForward);
    [[nodiscard]] QString claimAgain();
    [[nodiscard]] QString keep(const QStringList& commands);
    [[nodiscard]] QString backUpPlacementFile();
    [[nodiscard]] QByteArray savedContent() const;
    void push(std::vector<DesignChange> changes);
    enum class GroupEnd { Kept, RolledBack };
    void endGroup(GroupEnd end);

    // What was read from a file of commands, and what became of it.
    struct Replay;
    struct FilePart
    {
        qint64 begin; // bytes
        qint64 end;
    };
    [[nodiscard]] Replay replay(const TclInterpreter::Command& command, const QString& fileName, qint64 from = 0);
    [[nodiscard]] QString replayChange(const JournalReader::Change& change, const TclInterpreter::Command& command);
    void replaySaved(const TclInterpreter::Command& command, QStringList& messages);
    void replayJournal(const TclInterpreter::Command& command, QStringList& messages);
    [[nodiscard]] qint64 savedJournalBytes() const;
    [[nodiscard]] static std::optional<QByteArray> partsOf(const QString& fileName, const std::vector<FilePart>& parts);
    [[nodiscard]] QString rewriteJournal(const std::vector<FilePart>& kept);

    zelengine::ReferenceEngine& m_engine;
    const QString m_directory;
    FileLayer& m_files;
    QByteArray m_savedHash; // SHA-256 of the placement file, hexadecimal
    // Whether all of the placement file is in the design, or kept under another name.
    bool m_isPlacementFilePreserved = true;
    Journal m_journal;
    QUndoStack m_undoStack;
    zelengine::Design m_pristine; // the design as its file has it
    bool m_isReplaying = false;
    std::vector<DesignChange> m_groupChanges; // the accepted changes of the group that is being replayed
    bool m_isClaimed = false; // whether this program holds the lock and the placement file was not changed
    bool m_hasUnsavedPast = false;
};

} // namespace mirn::zelchip
