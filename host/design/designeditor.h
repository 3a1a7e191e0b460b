// SPDX-License-Identifier: MIT
#pragma once

#include "engine/design.h"
#include "engine/placementrules.h"
#include "engine/settingstore.h"
#include "host/design/journal.h"

#include <QObject>
#include <QString>
#include <QStringList>
#include <QUndoStack>

#include <optional>

namespace mirn::zelengine {
class ReferenceEngine;
}

namespace mirn::zelchip {

// The one way to change the design: asks the engine, keeps each accepted change in the journal before it answers, and
// can take it back. What cannot be kept is refused. Knows no widget.
//
// Every operation gives an empty text for success, else one sentence for people that says why nothing changed.
class DesignEditor final : public QObject
{
    Q_OBJECT
public:
    // Neither is owned by the other: the engine must outlive the editor. Nothing is written into the directory before
    // the first change.
    DesignEditor(zelengine::ReferenceEngine& engine, const QString& implementationDirectory, QObject* parent = nullptr);
    ~DesignEditor() override;

    // Brings back what was saved, then what the journal holds. To be called once, before any change. Gives what a user
    // should know of it; empty when there was nothing to say.
    [[nodiscard]] QStringList recover();

    QString place(const QString& resource, int site);
    QString reset(const QString& resource);
    QString remove(const QString& resource);
    QString restore(const QString& resource);
    QString setSetting(int site, const QString& key, const QString& value);

    QString undo();
    QString redo();

    // Writes the placements and settings and starts a new journal.
    QString save();

    // Whether anything changed since the last save.
    [[nodiscard]] bool isModified() const { return !m_undoStack.isClean() || m_hasUnsavedPast; }

    // For its signals and texts; to be changed through undo() and redo() only.
    [[nodiscard]] const QUndoStack& undoStack() const { return m_undoStack; }
    [[nodiscard]] zelengine::ReferenceEngine& engine() const { return m_engine; }
    [[nodiscard]] QString placementFile() const;

Q_SIGNALS:
    // After each change, undo, redo and save.
    void changed();

private:
    struct Change
    {
        QString text; // for the undo menu
        std::vector<zelengine::Placement> sitesBefore;
        std::vector<zelengine::Placement> sitesAfter;
        std::optional<zelengine::Design> designBefore; // only where resources come or go
        std::optional<zelengine::Design> designAfter;
        zelengine::SettingChanges settingsBefore;
        zelengine::SettingChanges settingsAfter;
    };
    class ChangeCommand;

    QString changeSites(const QString& text, const QString& command, const zelengine::Proposal& proposal);
    QString changeTree(const QString& text, const QString& command,
        QString (zelengine::ReferenceEngine::*change)(const QString&), const QString& resource);
    QString commit(const Change& change, const QString& command);
    void apply(const Change& change, bool isForward);
    [[nodiscard]] QStringList commandsFor(const Change& change, bool isForward) const;
    QString step(int index, bool isForward);
    [[nodiscard]] QString defaultSetting(int site, const QString& key) const;
    QString keep(const QStringList& commands);
    QStringList replay(const QStringList& commands, QStringList* accepted);
    void replaySaved(QStringList& messages);
    void replayJournal(QStringList& messages);

    zelengine::ReferenceEngine& m_engine;
    const QString m_directory;
    Journal m_journal;
    QUndoStack m_undoStack;
    zelengine::Design m_pristine; // as the design file has it
    bool m_isReplaying = false;
    bool m_hasUnsavedPast = false;
};

} // namespace mirn::zelchip
