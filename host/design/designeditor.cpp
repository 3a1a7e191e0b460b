// SPDX-License-Identifier: MIT
#include "host/design/designeditor.h"

#include "engine/model/resourceparameter.h"
#include "engine/referenceengine.h"
#include "host/design/designcommands.h"
#include "host/design/filereplacement.h"

#include <QCryptographicHash>
#include <QFileInfo>
#include <QUndoCommand>

#include <cerrno>
#include <utility>

namespace mirn::zelchip {

using zelengine::Placement;
using zelengine::Proposal;
using zelengine::Refusal;

namespace {

const char JournalFile[] = "/journal.tcl";

} // namespace

struct DesignEditor::Change
{
    enum class Branch { Stays, Goes, ComesBack }; // what happens to a resource and its subtree

    struct Parameter
    {
        int resource;
        QString key;
        QString before;
        QString after;
    };

    [[nodiscard]] bool removes(bool isForward) const
    {
        return branch == (isForward ? Branch::Goes : Branch::ComesBack);
    }
    [[nodiscard]] bool restores(bool isForward) const { return removes(!isForward); }

    QString text; // for the undo menu
    Branch branch = Branch::Stays;
    QString branchPath; // the resource at its top
    // When a branch is removed, these hold only what the engine does not restore together with it.
    std::vector<Placement> sitesBefore;
    std::vector<Placement> sitesAfter; // for the same resources, in the same order
    std::vector<int> lockedBefore; // the resources that are not locked afterwards
    std::vector<int> lockedAfter; // the resources that were not locked before
    std::vector<Parameter> parameters;
    int settingsSite = -1; // the site that carries the settings; -1 if none change
    zelengine::SiteSettingChanges settingsBefore;
    zelengine::SiteSettingChanges settingsAfter;
};

// The change is applied before the command is pushed, when it can still be refused, so the first redo() does nothing.
class DesignEditor::ChangeCommand final : public QUndoCommand
{
public:
    ChangeCommand(DesignEditor& editor, std::vector<Change> changes)
        : QUndoCommand(changes.front().text)
        , m_editor(editor)
        , m_changes(std::move(changes))
    { }

    [[nodiscard]] QStringList commands(bool isForward) const
    {
        QStringList result;
        for (const Change& change : m_changes) {
            const QStringList commands = m_editor.commandsFor(change, isForward);
            result = isForward ? result + commands : commands + result;
        }
        return result;
    }
    void undo() override
    {
        for (auto change = m_changes.rbegin(); change != m_changes.rend(); ++change)
            m_editor.apply(*change, false);
    }
    void redo() override
    {
        if (!std::exchange(m_isMade, true))
            return;
        for (const Change& change : m_changes)
            m_editor.apply(change, true);
    }

private:
    DesignEditor& m_editor;
    const std::vector<Change> m_changes; // one undo step, in the order in which they were made
    bool m_isMade = false;
};

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
    Change change;
    change.text = text;
    takeSites(change, proposal.placements);
    return commit(change, {command});
}

void DesignEditor::takeSites(Change& change, const std::vector<Placement>& placements) const
{
    for (const Placement& placement : placements) {
        const int before = m_engine.design().resource(placement.resource).site;
        if (before == placement.site)
            continue;
        change.sitesBefore.push_back({placement.resource, before});
        change.sitesAfter.push_back(placement);
    }
}

Refusal DesignEditor::move(const QString& text, const std::vector<Placement>& placements)
{
    Change change;
    change.text = text;
    takeSites(change, placements);
    if (change.sitesAfter.empty())
        return {};
    Refusal refusal = m_engine.rules().refusalToMove(change.sitesAfter);
    return refusal.isEmpty() ? commit(change, commandsFor(change, true)) : refusal;
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
    Change change;
    change.text = tr("Delete %1").arg(resource);
    change.branch = Change::Branch::Goes;
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
    Change change;
    change.text = tr("Restore %1").arg(resource);
    change.branch = Change::Branch::ComesBack;
    change.branchPath = resource;
    return commit(change, {designcommands::restore(resource)});
}

Refusal DesignEditor::lock(const QString& resource)
{
    return changeLocks(tr("Lock %1").arg(resource), designcommands::lock(resource), m_engine.proposeLock(resource),
        &Change::lockedAfter);
}

Refusal DesignEditor::unlock(const QString& resource)
{
    return changeLocks(tr("Unlock %1").arg(resource), designcommands::unlock(resource),
        m_engine.proposeUnlock(resource), &Change::lockedBefore);
}

// `side` says on which side of the change the resources are locked.
Refusal DesignEditor::changeLocks(
    const QString& text, const QString& command, zelengine::LockProposal proposal, std::vector<int> Change::*side)
{
    if (!proposal.isAllowed())
        return std::move(proposal.refusal);
    Change change;
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
    Change change;
    change.text = tr("Configure %1").arg(resource);
    change.parameters.push_back({configuration.resource, key, before, configuration.value});
    return commit(change, {designcommands::configure(resource, key, configuration.value)});
}

Refusal DesignEditor::setSetting(int site, const QString& key, const QString& value)
{
    const auto proposal = m_engine.settings().propose(site, key, value);
    if (!proposal.isAllowed())
        return proposal.refusal;
    Change change;
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
Refusal DesignEditor::commit(const Change& change, const QStringList& commands)
{
    const QString error = keep(commands);
    if (!error.isEmpty())
        return error;
    apply(change, true);
    if (m_isReplaying) {
        m_groupChanges.push_back(change); // becomes one undo step with the rest of its group
        return {};
    }
    push({change});
    Q_EMIT changed();
    return {};
}

void DesignEditor::push(std::vector<Change> changes)
{
    m_undoStack.push(new ChangeCommand(*this, std::move(changes))); // the stack owns it
}

void DesignEditor::endGroup(GroupEnd end)
{
    std::vector<Change> changes = std::exchange(m_groupChanges, {});
    if (end == GroupEnd::Kept && !changes.empty())
        push(std::move(changes));
    for (auto change = changes.rbegin(); end == GroupEnd::RolledBack && change != changes.rend(); ++change)
        apply(*change, false);
}

// The results are ignored: the engine accepted the change when it was new, and the design is again in that state.
void DesignEditor::apply(const Change& change, bool isForward)
{
    if (change.removes(isForward)) {
        (void)m_engine.remove(change.branchPath);
        return;
    }
    if (change.restores(isForward))
        (void)m_engine.restore(change.branchPath);
    m_engine.setLocked(isForward ? change.lockedBefore : change.lockedAfter, false);
    m_engine.setSites(isForward ? change.sitesAfter : change.sitesBefore);
    m_engine.setLocked(isForward ? change.lockedAfter : change.lockedBefore, true);
    for (const Change::Parameter& parameter : change.parameters)
        m_engine.setParameter(parameter.resource, parameter.key, isForward ? parameter.after : parameter.before);
    if (change.settingsSite >= 0)
        m_engine.setSettingChanges(change.settingsSite, isForward ? change.settingsAfter : change.settingsBefore);
}

// What is locked can neither be taken off its site nor be locked before it is placed. Therefore locks are taken off
// first and set last.
QStringList DesignEditor::commandsFor(const Change& change, bool isForward) const
{
    if (change.removes(isForward))
        return {designcommands::remove(change.branchPath)};
    QStringList commands;
    if (change.restores(isForward))
        commands.append(designcommands::restore(change.branchPath));
    else
        for (int resource : isForward ? change.lockedBefore : change.lockedAfter)
            commands.append(designcommands::unlock(path(resource)));
    std::vector<designcommands::Move> moves;
    for (std::size_t i = 0; i < change.sitesBefore.size(); ++i) {
        designcommands::Move move{
            path(change.sitesBefore[i].resource), change.sitesBefore[i].site, change.sitesAfter[i].site};
        if (!isForward)
            std::swap(move.from, move.to);
        if (move.from != move.to)
            moves.push_back(move);
    }
    commands += designcommands::moves(moves);
    for (const Change::Parameter& parameter : change.parameters)
        commands.append(designcommands::configure(
            path(parameter.resource), parameter.key, isForward ? parameter.after : parameter.before));
    for (int resource : isForward ? change.lockedAfter : change.lockedBefore)
        commands.append(designcommands::lock(path(resource)));
    if (change.settingsSite < 0)
        return commands;
    const zelengine::SettingChanges before{{change.settingsSite, change.settingsBefore}};
    const zelengine::SettingChanges after{{change.settingsSite, change.settingsAfter}};
    return commands
        + designcommands::settings(m_engine.device(), isForward ? before : after, isForward ? after : before);
}

// Removed resources keep their index, so this finds their path as well.
QString DesignEditor::path(int resource) const
{
    return m_engine.design().resource(resource).path;
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
