// SPDX-License-Identifier: MIT
#include "tests/tcl/changingproject.h"

#include "engine/resourceparameter.h"
#include "host/design/designcommands.h"
#include "host/design/designtcl.h"

#include <QDir>
#include <QFileInfo>

namespace zeltest {

using mirn::zelchip::DesignEditor;
using mirn::zelengine::Design;
using mirn::zelengine::Device;
using mirn::zelengine::ReferenceEngine;
using mirn::zelengine::ResourceParameter;
using mirn::zelengine::Site;
using mirn::zelengine::SiteSetting;
namespace designcommands = mirn::zelchip::designcommands;

namespace {

constexpr int Gone = -2;
constexpr int MostOrigins = 2; // of the few resources that a sequence is about

std::unique_ptr<ReferenceEngine> openEngine(const QString& projectFolder)
{
    QString error;
    QStringList warnings;
    auto engine = ReferenceEngine::open(projectFolder, &error, &warnings);
    if (!engine)
        qFatal("%s", qPrintable(error));
    return engine;
}

QString folderTemplate()
{
    const QString memory = QStringLiteral("/dev/shm");
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + QStringLiteral("/zel-XXXXXX");
}

// All that can be set.
std::vector<Step> settingsOf(const Device& device)
{
    std::vector<Step> steps;
    for (const Site& site : device.sites()) {
        for (const SiteSetting& setting : site.settings) {
            const QStringList keys = setting.key.split(QLatin1Char(':'));
            for (const QString& key : keys) {
                for (const QString& choice : setting.choices) {
                    Step& step = steps.emplace_back(Step::Kind::Set);
                    step.site = site.id;
                    step.key = key;
                    step.value = choice;
                }
            }
        }
    }
    return steps;
}

} // namespace

QString Step::text() const
{
    switch (kind) {
    case Kind::Place:
        return designcommands::place(resource, site);
    case Kind::Reset:
        return designcommands::reset(resource);
    case Kind::Remove:
        return designcommands::remove(resource);
    case Kind::Restore:
        return designcommands::restore(resource);
    case Kind::Configure:
        return designcommands::configure(resource, key, value);
    case Kind::Set:
        return designcommands::setting(site, key, value);
    case Kind::Undo:
        return QStringLiteral("undo");
    case Kind::Redo:
        return QStringLiteral("redo");
    case Kind::Save:
        return QStringLiteral("zel_project save");
    case Kind::Reopen:
        break;
    }
    return QStringLiteral("# the program ends and is started again");
}

bool ChangingProject::State::operator==(const State& other) const
{
    return sites == other.sites && removed == other.removed && configured == other.configured
        && settings == other.settings;
}

ChangingProject::ChangingProject(const QString& projectFolder)
    : m_engine(openEngine(projectFolder))
    , m_pristine(m_engine->design())
    , m_resources(m_pristine.all())
    , m_few(m_resources)
    , m_settings(settingsOf(m_engine->device()))
    , m_folder(folderTemplate())
{ }

void ChangingProject::startOver()
{
    m_editor.reset();
    QDir(m_folder.filePath(QStringLiteral("impl"))).removeRecursively();
    open();
}

// With what they are part of, and the clock sources that stand against their removal and return.
void ChangingProject::chooseFew(Random& random)
{
    m_few.clear();
    for (int missing = 1 + random.below(MostOrigins); missing > 0; --missing) {
        for (int index = random.oneOf(m_resources); index >= 0; index = m_pristine.resource(index).parent) {
            m_few.push_back(index);
            for (const std::vector<int>& related : {m_pristine.fedBy(index), m_pristine.clocksOf(index)})
                m_few.insert(m_few.end(), related.begin(), related.end());
        }
    }
}

// As a program that is started anew; what the one before did in memory is gone.
void ChangingProject::open()
{
    m_editor.reset();
    m_engine->setDesign(m_pristine);
    const QList<int> carriers = m_engine->settings().changes().keys();
    for (int carrier : carriers)
        m_engine->setSettingChanges(carrier, {});
    m_editor = std::make_unique<DesignEditor>(*m_engine, m_folder.filePath(QStringLiteral("impl")));
    m_said = m_editor->recover(changeCommand(*m_editor));
    m_states.assign(static_cast<std::size_t>(m_editor->undoStack().index()), std::nullopt);
    m_states.emplace_back(state());
}

Step ChangingProject::randomStep(Random& random) const
{
    using Kind = Step::Kind;
    static const std::vector<Kind> others{Kind::Undo, Kind::Undo, Kind::Undo, Kind::Redo, Kind::Save, Kind::Reopen};
    return random.below(3) > 0 ? randomChange(random) : Step(random.oneOf(others));
}

Step ChangingProject::randomChange(Random& random) const
{
    static const std::vector<Step::Kind> kinds{Step::Kind::Place, Step::Kind::Place, Step::Kind::Place,
        Step::Kind::Place, Step::Kind::Reset, Step::Kind::Remove, Step::Kind::Remove, Step::Kind::Restore,
        Step::Kind::Restore, Step::Kind::Configure, Step::Kind::Set};
    Step step(random.oneOf(kinds));
    if (step.kind == Step::Kind::Set)
        return random.oneOf(m_settings);
    const int resource = random.oneOf(m_few);
    step.resource = m_pristine.resource(resource).path;
    const QStringList removed = m_engine->design().removedPaths();
    if (step.kind == Step::Kind::Restore && !removed.isEmpty())
        step.resource = random.oneOf(removed);
    if (step.kind == Step::Kind::Place && m_engine->design().find(step.resource) >= 0) {
        const std::vector<int> sites = m_engine->rules().sitesFor(resource);
        step.site = sites.empty() ? random.oneOf(m_engine->device().sites()).id : random.oneOf(sites);
    }
    if (step.kind == Step::Kind::Configure) {
        static const std::vector<QString> values{"2.5", "5", "10", "62.5", "100", "148.50"};
        step.value = random.oneOf(values);
        for (const ResourceParameter& parameter : parametersOf(m_pristine.resource(resource).type))
            step.key = parameter.key;
    }
    return step;
}

QString ChangingProject::perform(const Step& step)
{
    if (step.kind == Step::Kind::Reopen)
        return faultOfOpening();
    const QUndoStack& history = m_editor->undoStack();
    const int before = history.index();
    const bool mayBeRefused = !(step.kind == Step::Kind::Undo && history.canUndo())
        && !(step.kind == Step::Kind::Redo && history.canRedo()) && step.kind != Step::Kind::Save;
    const QString refusal = answerTo(step);
    if (!refusal.isEmpty() && !mayBeRefused)
        return QStringLiteral("refused: ") + refusal;
    const auto now = static_cast<std::size_t>(history.index());
    if (history.index() > before && step.kind != Step::Kind::Redo) {
        m_states.resize(now);
        m_states.emplace_back(state());
    }
    const std::optional<State>& expected = m_states[now];
    return expected ? complaint(*expected) : QString();
}

QString ChangingProject::answerTo(const Step& step)
{
    switch (step.kind) {
    case Step::Kind::Place:
        return m_editor->place(step.resource, step.site);
    case Step::Kind::Reset:
        return m_editor->reset(step.resource);
    case Step::Kind::Remove:
        return m_editor->remove(step.resource);
    case Step::Kind::Restore:
        return m_editor->restore(step.resource);
    case Step::Kind::Configure:
        return m_editor->configure(step.resource, step.key, step.value);
    case Step::Kind::Set:
        return m_editor->setSetting(step.site, step.key, step.value);
    case Step::Kind::Undo:
        return m_editor->undo();
    case Step::Kind::Redo:
        return m_editor->redo();
    case Step::Kind::Save:
        return m_editor->save();
    case Step::Kind::Reopen:
        break;
    }
    return {};
}

QString ChangingProject::faultOfOpening()
{
    const State before = state();
    open();
    // That changes are back is all that there is to say.
    const QString said = m_said.join(QLatin1Char(' '));
    if (m_said.size() > 1 || said.contains(QStringLiteral("refused")) || said.contains(QStringLiteral("aside")))
        return said;
    return complaint(before);
}

ChangingProject::State ChangingProject::state() const
{
    const Design& design = m_engine->design();
    State result;
    result.removed = design.removedPaths();
    result.settings = m_engine->settings().changes();
    for (int index : m_resources) {
        const auto& resource = design.resource(index);
        const bool isThere = design.find(resource.path) == index;
        result.sites.push_back(isThere ? resource.site : Gone);
        for (const ResourceParameter& parameter : parametersOf(resource.type)) {
            const QString value = isThere ? design.parameter(index, parameter.key) : QString();
            if (isThere && value != design.originalParameter(index, parameter.key))
                result.configured.append(resource.path + QLatin1Char(' ') + parameter.key + QLatin1Char('=') + value);
        }
    }
    return result;
}

// What is not as it should be; empty when all is.
QString ChangingProject::complaint(const State& expected) const
{
    const State found = state();
    if (found == expected)
        return {};
    QStringList differences;
    for (std::size_t i = 0; i < m_resources.size(); ++i) {
        if (found.sites[i] != expected.sites[i])
            differences.append(QStringLiteral("%1 is on %2 instead of %3")
                                   .arg(m_pristine.resource(m_resources[i]).path, QString::number(found.sites[i]),
                                       QString::number(expected.sites[i])));
    }
    if (found.removed != expected.removed)
        differences.append(QStringLiteral("removed is %1 instead of %2")
                               .arg(found.removed.join(QLatin1Char(' ')), expected.removed.join(QLatin1Char(' '))));
    if (found.configured != expected.configured)
        differences.append(
            QStringLiteral("configured is %1 instead of %2")
                .arg(found.configured.join(QLatin1Char(' ')), expected.configured.join(QLatin1Char(' '))));
    if (found.settings != expected.settings)
        differences.append(QStringLiteral("settings differ"));
    return differences.join(QStringLiteral("; "));
}

} // namespace zeltest
