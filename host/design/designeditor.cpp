// SPDX-License-Identifier: MIT
#include "host/design/designeditor.h"

#include "engine/model/resourceparameter.h"
#include "engine/referenceengine.h"
#include "host/design/changecommand.h"
#include "host/design/designcommands.h"
#include "host/design/filereplacement.h"

#include <QCryptographicHash>
#include <QFileInfo>

#include <cerrno>
#include <utility>

namespace mirn::zelchip {

using zelengine::Placement;
using zelengine::Proposal;
using zelengine::Refusal;

namespace {

const char JournalFile[] = "/journal.tcl";

} // namespace

DesignEditor::DesignEditor(
    zelengine::ReferenceEngine& engine, const QString& implementationDirectory, QObject* parent, FileLayer& files)
    : QObject(parent)
    , m_engine(engine)
    , m_directory(implementationDirectory)
    , m_files(files)
    , m_journal(implementationDirectory + QLatin1String(JournalFile), files)
    , m_pristine(engine.design())
{
    engine.setSettingWriter(
        [this](int site, const QString& key, const QString& value) { return writeSetting(site, key, value); });
    engine.setParameterWriter([this](const QString& resource, const QString& key, const QString& value) {
        return configure(resource, key, value);
    });
}

DesignEditor::~DesignEditor()
{
    m_engine.setSettingWriter(nullptr);
    m_engine.setParameterWriter(nullptr);
}

QString DesignEditor::placementFile() const
{
    return m_directory + QLatin1String(PlacementFile);
}

Refusal DesignEditor::place(const QString& resource, int site)
{
    const int index = m_engine.design().find(resource);
    if (index < 0)
        return tr("there is no resource \"%1\"").arg(resource);
    return changeSites(
        tr("Place %1").arg(resource), designcommands::place(resource, site), m_engine.rules().propose(index, site));
}

Refusal DesignEditor::reset(const QString& resource)
{
    const int index = m_engine.design().find(resource);
    if (index < 0)
        return tr("there is no resource \"%1\"").arg(resource);
    return changeSites(
        tr("Reset %1").arg(resource), designcommands::reset(resource), m_engine.rules().proposeReset(index));
}

Refusal DesignEditor::changeSites(const QString& text, const QString& command, const Proposal& proposal)
{
    if (!proposal.isAllowed())
        return proposal.refusal;
    DesignChange change;
    change.text = text;
    change.takeSites(m_engine.design(), proposal.placements);
    return commit(change, {command});
}

Refusal DesignEditor::move(const QString& text, const std::vector<Placement>& placements)
{
    DesignChange change;
    change.text = text;
    change.takeSites(m_engine.design(), placements);
    if (change.sitesAfter.empty())
        return {};
    Refusal refusal = m_engine.rules().refusalToMove(change.sitesAfter);
    return refusal.isEmpty() ? commit(change, change.commands(m_engine, true)) : refusal;
}

Refusal DesignEditor::swap(const QString& resource, const QString& other)
{
    const int index = m_engine.design().find(resource);
    const int otherIndex = m_engine.design().find(other);
    if (index < 0 || otherIndex < 0)
        return tr("there is no resource \"%1\"").arg(index < 0 ? resource : other);
    const Proposal proposal = m_engine.rules().proposeSwap(index, otherIndex);
    return proposal.isAllowed() ? move(tr("Swap %1 and %2").arg(resource, other), proposal.placements)
                                : proposal.refusal;
}

Refusal DesignEditor::remove(const QString& resource)
{
    const zelengine::Design& design = m_engine.design();
    const int top = design.find(resource);
    if (top < 0)
        return tr("there is no resource \"%1\"").arg(resource);
    DesignChange change;
    change.text = tr("Delete %1").arg(resource);
    change.branch = DesignChange::Branch::Goes;
    change.branchPath = resource;
    for (int index : design.subtree(top)) {
        const zelengine::Resource& part = design.resource(index);
        if (part.site >= 0 && !part.fixed) {
            change.sitesBefore.push_back({index, part.site});
            change.sitesAfter.push_back({index, -1});
        }
        if (part.locked)
            change.lockedBefore.push_back(index);
        for (const zelengine::ResourceParameter& parameter : zelengine::parametersOf(part.type)) {
            const QString value = design.parameter(index, parameter.key);
            const QString original = design.originalParameter(index, parameter.key);
            if (value != original)
                change.parameters.push_back({index, parameter.key, value, original});
        }
    }
    return commit(change, {designcommands::remove(resource)});
}

Refusal DesignEditor::restore(const QString& resource)
{
    Refusal refusal = m_engine.rules().refusalToRestore(resource);
    if (!refusal.isEmpty())
        return refusal;
    DesignChange change;
    change.text = tr("Restore %1").arg(resource);
    change.branch = DesignChange::Branch::ComesBack;
    change.branchPath = resource;
    return commit(change, {designcommands::restore(resource)});
}

Refusal DesignEditor::lock(const QString& resource)
{
    return changeLocks(tr("Lock %1").arg(resource), designcommands::lock(resource), m_engine.proposeLock(resource),
        &DesignChange::lockedAfter);
}

Refusal DesignEditor::unlock(const QString& resource)
{
    return changeLocks(tr("Unlock %1").arg(resource), designcommands::unlock(resource),
        m_engine.proposeUnlock(resource), &DesignChange::lockedBefore);
}

// `side` says on which side of the change the resources are locked.
Refusal DesignEditor::changeLocks(
    const QString& text, const QString& command, zelengine::LockProposal proposal, std::vector<int> DesignChange::*side)
{
    if (!proposal.isAllowed())
        return std::move(proposal.refusal);
    DesignChange change;
    change.text = text;
    change.*side = std::move(proposal.resources);
    return commit(change, {command});
}

Refusal DesignEditor::configure(const QString& resource, const QString& key, const QString& value)
{
    const auto configuration = m_engine.proposeConfiguration(resource, key, value);
    if (!configuration.isAllowed())
        return configuration.refusal;
    const QString before = m_engine.design().parameter(configuration.resource, key);
    if (configuration.value == before)
        return {};
    DesignChange change;
    change.text = tr("Configure %1").arg(resource);
    change.parameters.push_back({configuration.resource, key, before, configuration.value});
    return commit(change, {designcommands::configure(resource, key, configuration.value)});
}

Refusal DesignEditor::setSetting(int site, const QString& key, const QString& value)
{
    const auto proposal = m_engine.settings().propose(site, key, value);
    if (!proposal.isAllowed())
        return proposal.refusal;
    DesignChange change;
    change.text = tr("Set %1").arg(key);
    change.settingsSite = proposal.carrier;
    change.settingsBefore = m_engine.settings().changes().value(proposal.carrier);
    change.settingsAfter = proposal.changes;
    // The dialog writes the channel values again where it offers common ones as well; that changes nothing.
    if (change.settingsAfter == change.settingsBefore)
        return {};
    return commit(change, {designcommands::setting(site, key, value)});
}

Refusal DesignEditor::writeSetting(int site, const QString& key, const QString& value)
{
    Refusal refusal = setSetting(site, key, value);
    if (!refusal.isEmpty())
        Q_EMIT settingRefused(refusal.sentence());
    return refusal;
}

// The journal comes before the design: a change that was answered must survive a crash.
Refusal DesignEditor::commit(const DesignChange& change, const QStringList& commands)
{
    const QString error = keep(commands);
    if (!error.isEmpty())
        return error;
    change.apply(m_engine, true);
    if (m_isReplaying) {
        m_groupChanges.push_back(change); // becomes one undo step with the rest of its group
        return {};
    }
    push({change});
    Q_EMIT changed();
    return {};
}

void DesignEditor::push(std::vector<DesignChange> changes)
{
    m_undoStack.push(new ChangeCommand(m_engine, std::move(changes))); // the stack owns it
}

void DesignEditor::endGroup(GroupEnd end)
{
    std::vector<DesignChange> changes = std::exchange(m_groupChanges, {});
    if (end == GroupEnd::Kept && !changes.empty())
        push(std::move(changes));
    for (auto change = changes.rbegin(); end == GroupEnd::RolledBack && change != changes.rend(); ++change)
        change->apply(m_engine, false);
}

Refusal DesignEditor::undo()
{
    return m_undoStack.canUndo() ? step(m_undoStack.index() - 1, false) : tr("there is nothing to undo");
}

Refusal DesignEditor::redo()
{
    return m_undoStack.canRedo() ? step(m_undoStack.index(), true) : tr("there is nothing to redo");
}

Refusal DesignEditor::step(int index, bool isForward)
{
    const auto* command = static_cast<const ChangeCommand*>(m_undoStack.command(index));
    const QString error = keep(command->commands(isForward));
    if (!error.isEmpty())
        return error;
    isForward ? m_undoStack.redo() : m_undoStack.undo();
    Q_EMIT changed();
    return {};
}

// At the latest, the lock is taken at the first change, so that a project that another program has open can still be
// looked at.
QString DesignEditor::claim()
{
    if (m_isClaimed)
        return {};
    const QString error = m_journal.claim();
    if (!error.isEmpty())
        return error;
    m_isClaimed = hashOfFile(placementFile()) == m_savedHash;
    if (m_isClaimed)
        return {};
    m_journal.release();
    return tr("another program has changed the project; open it again");
}

void DesignEditor::release()
{
    m_isClaimed = false;
    m_journal.release();
}

bool DesignEditor::isOutdated() const
{
    if (m_journal.isDisabled())
        return false; // a file could not be read, which is said already
    return !m_journal.isAsKnown() || !m_journal.lock().isUndisputed() || hashOfFile(placementFile()) != m_savedHash;
}

bool DesignEditor::isOfAnother() const
{
    return !m_isClaimed && (m_journal.lock().isOfAnother() || isOutdated());
}

QString DesignEditor::keep(const QStringList& commands)
{
    if (m_isReplaying || commands.isEmpty())
        return {};
    const QString error = claim();
    return error.isEmpty() ? m_journal.append(commands) : error;
}

// The journal is emptied only after the placement file that replaces it is on the disk.
QString DesignEditor::save()
{
    QString error = claimAgain();
    if (error.isEmpty())
        error = m_journal.secure();
    if (error.isEmpty())
        error = backUpPlacementFile();
    if (!error.isEmpty())
        return error;
    const QByteArray content = savedContent();
    const FileReplacement replacement = replaceFile(placementFile(), content, m_files, Leftovers::AreRemoved);
    if (replacement.isDone) {
        m_savedHash = QCryptographicHash::hash(content, QCryptographicHash::Sha256).toHex();
        m_journal.setBase(journalformat::baseLine(m_savedHash)); // holds even if the rest fails
    }
    if (!replacement.error.isEmpty())
        return tr("the placements cannot be saved in %1: %2").arg(placementFile(), replacement.error);
    m_undoStack.setClean();
    m_hasUnsavedPast = false;
    if (!m_journal.restart(journalformat::baseLine(m_savedHash)).isEmpty())
        m_journal.markSaved();
    Q_EMIT changed();
    return {};
}

// Another program may have taken over the project meanwhile, or somebody may have edited the placement file.
QString DesignEditor::claimAgain()
{
    const QString error = claim();
    if (!error.isEmpty())
        return error;
    const bool isOurs = m_journal.lock().isUndisputed() && hashOfFile(placementFile()) == m_savedHash;
    return isOurs ? QString() : tr("another program has changed the project; open it again");
}

// The first line says which part of the journal the file holds, in case the program is stopped before the journal is
// emptied.
QByteArray DesignEditor::savedContent() const
{
    const QStringList commands = designcommands::between(m_pristine, m_engine.design())
        + designcommands::settings(m_engine.device(), {}, m_engine.settings().changes());
    const journalformat::Checkpoint journal = m_journal.content();
    QByteArray content = journal.size > 0 ? journalformat::checkpointLine(journal) : QByteArray();
    for (const QString& command : commands)
        content += command.toUtf8() + '\n';
    return content;
}

// Commands of the placement file that were refused must not be lost by overwriting it.
QString DesignEditor::backUpPlacementFile()
{
    if (!m_isPlacementFilePreserved && entryExists(placementFile()) && keepBackup(placementFile(), m_files).isEmpty())
        return tr("%1 cannot be kept under another name: %2").arg(placementFile(), qt_error_string(errno));
    m_isPlacementFilePreserved = true;
    return {};
}

QString DesignEditor::discard()
{
    const QString error = claimAgain();
    return error.isEmpty() ? m_journal.restart(journalformat::baseLine(m_savedHash)) : error;
}

} // namespace mirn::zelchip
