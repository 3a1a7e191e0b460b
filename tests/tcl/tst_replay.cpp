// SPDX-License-Identifier: MIT
#include "engine/model/resourceparameter.h"
#include "host/design/designcommands.h"
#include "tests/support/random.h"
#include "tests/support/shortened.h"
#include "tests/support/testmain.h"
#include "tests/tcl/editedproject.h"

#include <QTest>

#include <optional>
#include <vector>

using namespace zeltest;
namespace designcommands = mirn::zelchip::designcommands;

namespace {

constexpr int LongestSequence = 30;
constexpr int MostOrigins = 2; // of the few resources that a sequence is about
constexpr qint64 LongestShrinking = 60'000; // ms
const QByteArray Reopen = "# the program ends and is started again";

#ifdef __SANITIZE_ADDRESS__
constexpr int SequencesOfEach = 500;
#else
constexpr int SequencesOfEach = 5000;
#endif

// Takes steps in a project, each as one would type it into the console, and says which of them goes wrong: after which
// a state is there that saving, undoing, redoing or opening did not keep or bring back. A change that the editor
// refuses is not wrong.
class Replay
{
public:
    Replay(const QString& folder, const QByteArray& design)
        : m_project(folder, design)
        , m_resources(m_project.pristine().all())
    {
        for (const auto& site : m_project.engine().device().sites()) {
            for (const auto& setting : site.settings) {
                for (const QString& key : setting.key.split(':')) {
                    for (const QString& choice : setting.choices)
                        m_settings.append(designcommands::setting(site.id, key, choice).toUtf8());
                }
            }
        }
    }

    // Takes random steps, then opens the project without having saved it, saves it and opens it again. The steps up to
    // the one that goes wrong; none when all is well.
    [[nodiscard]] QByteArrayList stepsThatGoWrong(unsigned int seed)
    {
        const QByteArrayList end{Reopen, "save", Reopen};
        Random random(seed);
        startOver();
        chooseFew(random);
        QByteArrayList steps;
        const int count = 1 + random.below(LongestSequence);
        while (steps.size() < count + end.size()) {
            steps.append(steps.size() < count ? randomStep(random) : end[steps.size() - count]);
            if (!perform(steps.last()).isEmpty())
                return steps;
        }
        return {};
    }

    // Returns what goes wrong when the steps are taken; empty when nothing does.
    [[nodiscard]] QString faultOf(const QByteArrayList& steps)
    {
        startOver();
        for (const QByteArray& step : steps) {
            const QString fault = perform(step);
            if (!fault.isEmpty())
                return step + ": " + fault;
        }
        return {};
    }

private:
    void startOver()
    {
        m_project.startOver();
        m_states.assign(1, m_project.state());
    }

    // Chooses as well what the resources are part of, and the clock sources that stand against their removal and
    // return.
    void chooseFew(Random& random)
    {
        const Design& design = m_project.pristine();
        m_few.clear();
        for (int missing = 1 + random.below(MostOrigins); missing > 0; --missing) {
            for (int index = random.oneOf(m_resources); index >= 0; index = design.resource(index).parent) {
                m_few.push_back(index);
                for (const std::vector<int>& related : {design.fedBy(index), design.sourcesOf(index)})
                    m_few.insert(m_few.end(), related.begin(), related.end());
            }
        }
    }

    [[nodiscard]] QByteArray randomStep(Random& random)
    {
        static const QByteArrayList others{"undo", "undo", "undo", "redo", "save", Reopen};
        return random.below(3) > 0 ? randomChange(random) : random.oneOf(others);
    }

    [[nodiscard]] QByteArray randomChange(Random& random)
    {
        static const QByteArrayList values{"2.5", "5", "10", "62.5", "100", "148.50"};
        const ReferenceEngine& engine = m_project.engine();
        const QStringList removed = engine.design().removedPaths();
        const int index = random.oneOf(m_few);
        const auto& resource = m_project.pristine().resource(index);
        switch (random.below(14)) {
        case 0:
            return designcommands::reset(resource.path).toUtf8();
        case 1:
        case 2:
            return designcommands::remove(resource.path).toUtf8();
        case 3:
        case 4:
            return designcommands::restore(removed.isEmpty() ? resource.path : random.oneOf(removed)).toUtf8();
        case 5:
            for (const auto& parameter : mirn::zelengine::parametersOf(resource.type))
                return designcommands::configure(resource.path, parameter.key, random.oneOf(values)).toUtf8();
            [[fallthrough]];
        case 6:
            return random.oneOf(m_settings);
        case 7:
        case 8:
            return (random.below(3) > 0 ? designcommands::lock(resource.path) : designcommands::unlock(resource.path))
                .toUtf8();
        case 9:
            return "zel_resource swap -rsc {" + resource.path.toUtf8() + "} -with {"
                + m_project.pristine().resource(random.oneOf(m_few)).path.toUtf8() + '}';
        default:
            break;
        }
        const bool isThere = engine.design().find(resource.path) >= 0;
        const std::vector<int> sites = isThere ? engine.rules().sitesFor(index) : std::vector<int>();
        const int site = sites.empty() ? random.oneOf(engine.device().sites()).id : random.oneOf(sites);
        return designcommands::place(resource.path, site).toUtf8();
    }

    [[nodiscard]] QString perform(const QByteArray& step)
    {
        if (step == Reopen)
            return reopen();
        const QUndoStack& history = m_project.editor().undoStack();
        const int before = history.index();
        const bool mayBeRefused = step == "undo" ? !history.canUndo()
            : step == "redo"                     ? !history.canRedo()
                                                 : step != "save";
        const QString refusal = m_project.run(QString::fromUtf8(step));
        if (!refusal.isEmpty() && !mayBeRefused)
            return "refused: " + refusal;
        const auto now = static_cast<std::size_t>(history.index());
        const QStringList state = m_project.state();
        if (history.index() > before && step != "redo") {
            m_states.resize(now);
            m_states.emplace_back(state);
        }
        return m_states[now] ? differenceOf(state, *m_states[now]) : QString();
    }

    [[nodiscard]] QString reopen()
    {
        const QStringList before = m_project.state();
        const QStringList said = m_project.open();
        const QStringList after = m_project.state();
        m_states.assign(static_cast<std::size_t>(m_project.editor().undoStack().index()), std::nullopt);
        m_states.emplace_back(after);
        // That changes are back is all that there is to say.
        const QString all = said.join(' ');
        return said.size() > 1 || all.contains("refused") || all.contains("aside") ? all : differenceOf(after, before);
    }

    EditedProject m_project;
    const std::vector<int> m_resources;
    std::vector<int> m_few; // of which a sequence is: so more steps have to do with each other
    QByteArrayList m_settings; // all that can be set
    std::vector<std::optional<QStringList>> m_states; // by position in the undo history; none where it was not seen
};

} // namespace

// A change that the editor accepts is there after the next opening, saved or not, whatever was done before. The seed of
// a sequence that goes wrong is printed with the shortest part of it that still does; ZEL_REPLAY_SEED takes it alone,
// ZEL_REPLAY_SEQUENCES says how many there are to be.
class TestReplay : public zeltest::Test
{
    Q_OBJECT
private Q_SLOTS:
    void acceptedChangesAreThereAgain_data()
    {
        const Rows<QString> row;
        row("sample project", ZEL_SAMPLE_FOLDER);
        row("small device, tangled design", {});
    }

    void acceptedChangesAreThereAgain()
    {
        const auto [folder] = row<QString>();
        // Everything that the rules know, and parts of it fixed: an IP inside an IP, clocks that feed each other's IPs,
        // removed things inside removed things.
        Replay replay(folder, dataFile("tcl/tangle.json"));
        bool isOne = false;
        const unsigned int only = qEnvironmentVariable("ZEL_REPLAY_SEED").toUInt(&isOne);
        bool isCounted = false;
        const int wanted = qEnvironmentVariableIntValue("ZEL_REPLAY_SEQUENCES", &isCounted);
        const int count = isOne ? 1 : isCounted ? wanted : SequencesOfEach;
        for (int i = 0; i < count; ++i) {
            const unsigned int seed = isOne ? only : static_cast<unsigned int>(i);
            const QByteArrayList steps = replay.stepsThatGoWrong(seed);
            if (steps.isEmpty())
                continue;
            const QByteArrayList shortest = shortened(
                steps, [&](const QByteArrayList& fewer) { return !replay.faultOf(fewer).isEmpty(); }, LongestShrinking);
            const QByteArray told = "ZEL_REPLAY_SEED=" + QByteArray::number(seed) + "\n    " + shortest.join("\n    ")
                + "\n    goes wrong at " + replay.faultOf(shortest).toUtf8();
            QFAIL(told.constData());
        }
    }
};

ZEL_TEST_MAIN(TestReplay)
#include "tst_replay.moc"
