// SPDX-License-Identifier: MIT
#include "tests/soak/killround.h"

#include <QFile>
#include <QThread>

#include <cmath>

namespace soak {

namespace {

constexpr int Permille = 1000;
constexpr double LongestOpening = 120'000; // us; most of the openings take less
constexpr double LongestCommand = 1'500; // us

} // namespace

KillRound::KillRound(const SampleProject& project, const QString& script, const Plan& plan, Figures& figures)
    : m_project(project)
    , m_script(script)
    , m_plan(plan)
    , m_figures(figures)
{ }

Steps KillRound::randomSteps(const Plan& plan, zeltest::Random& random)
{
    using Kind = Step::Kind;
    Steps steps;
    Commands commands(plan, random);
    const int sessions = 2 + random.below(4);
    for (int session = 0; session < sessions; ++session) {
        if (random.below(3) == 0) {
            const Kind damages[] = {Kind::Torn, Kind::Refused, Kind::Cut, Kind::Large};
            steps.push_back({damages[random.below(4)], {}, 500 + random.below(4000)});
        }
        while (random.below(3) == 0)
            steps.push_back({Kind::KillOpening, {}, random.below(Permille)});
        const bool savesOften = random.below(4) == 0;
        for (int count = random.below(60); count > 0; --count) {
            steps.push_back({Kind::Command, commands.next(), 0});
            if (savesOften && random.below(3) == 0)
                steps.push_back({Kind::Command, "zel_project save", 0});
        }
        steps.push_back({Kind::Kill, {}, random.below(Permille)});
    }
    // What can be taken back was kept as well.
    for (int count = 1 + random.below(6); count > 0; --count) {
        steps.push_back({Kind::Command, "undo", 0});
        steps.push_back({Kind::Command, "state", 0});
    }
    steps.push_back({Kind::Kill, {}, Permille});
    return steps;
}

QByteArray KillRound::run(const Steps& steps, Moments moments)
{
    m_project.forgetWork();
    m_moments = moments;
    m_models = {DesignModel(m_plan)};
    m_isDamaged = m_wasCut = false;
    m_made.clear();
    ++m_figures.rounds;
    QByteArrayList commands;
    QByteArray problem;
    for (const Step& step : steps) {
        if (step.kind == Step::Kind::Command) {
            commands.append(step.command);
            continue;
        }
        if (step.kind == Step::Kind::Kill || !commands.isEmpty())
            problem = session(std::exchange(commands, {}), step.kind == Step::Kind::Kill ? step.number : Permille);
        if (problem.isEmpty() && step.kind == Step::Kind::KillOpening)
            problem = killOpening(step.number);
        else if (problem.isEmpty() && step.kind != Step::Kind::Kill)
            damage(step);
        m_made.push_back(step);
        if (!problem.isEmpty())
            return problem;
    }
    return session(commands, Permille);
}

template <typename Fact> QByteArray KillRound::keepThose(const Fact& fact)
{
    std::vector<DesignModel> possible;
    QByteArray problem;
    for (DesignModel& model : m_models) {
        problem = fact(model);
        if (problem.isEmpty())
            possible.push_back(model);
    }
    m_models = possible;
    return m_models.empty() ? problem : QByteArray();
}

// Nothing is said of a project to which nothing happened but the death of its program.
QByteArray KillRound::open(SoakProgram& program)
{
    const QByteArray state = program.opened();
    const QByteArray said = program.errors();
    if (state.isEmpty())
        return "does not open: " + said;
    ++m_figures.states;
    QByteArray problem = keepThose([&](DesignModel& model) {
        model.startAgain();
        return model.compare(state);
    });
    if (problem.isEmpty() && !m_wasCut && said.contains("another state"))
        problem = "its own journal is not used";
    if (problem.isEmpty() && !m_isDamaged && (said.contains("refused") || said.contains("cut off")))
        problem = "what it wrote cannot be read";
    m_isDamaged = m_wasCut = false;
    return problem.isEmpty() ? problem : "opened again: " + problem + "\n" + said;
}

QByteArray KillRound::killOpening(int moment)
{
    if (m_moments == Moments::AfterTheLastAnswer)
        return session({}, moment);
    SoakProgram program(m_project.path(), m_script);
    QThread::usleep(static_cast<unsigned long>(LongestOpening * moment / Permille));
    ++m_figures.kills;
    m_figures.killsOpening += program.kill().isEmpty() ? 1 : 0;
    return {};
}

QByteArray KillRound::session(const QByteArrayList& commands, int moment)
{
    SoakProgram program(m_project.path(), m_script);
    const QByteArray problem = open(program);
    if (!problem.isEmpty())
        return problem;
    if (!commands.isEmpty())
        program.send(commands.join('\n'));
    program.flush();
    QByteArrayList answers;
    if (m_moments == Moments::AfterTheLastAnswer || moment == Permille) {
        while (answers.size() < commands.size()) {
            answers.append(program.answer());
            if (answers.last().isEmpty())
                return "it ended by itself: " + program.errors();
        }
    } else {
        QThread::usleep(
            static_cast<unsigned long>(LongestCommand * (commands.size() + 1) * std::pow(moment / 1000.0, 2)));
    }
    answers += program.kill();
    ++m_figures.kills;
    return followAll(commands, answers);
}

QByteArray KillRound::followAll(const QByteArrayList& commands, const QByteArrayList& answers)
{
    for (int i = 0; i < answers.size(); ++i) {
        m_made.push_back({Step::Kind::Command, commands[i], 0});
        m_figures.confirmed += answers[i].startsWith("ok") ? 1 : 0;
        m_figures.states += answers[i].startsWith("state") ? 1 : 0;
        const QByteArray problem = keepThose([&](DesignModel& model) { return model.follow(commands[i], answers[i]); });
        if (!problem.isEmpty())
            return commands[i] + ": " + problem + " (" + answers[i] + ')';
    }
    if (answers.size() >= commands.size())
        return {};
    ++m_figures.killsInFlight;
    const QByteArray inFlight = commands[answers.size()];
    m_made.push_back({Step::Kind::Command, inFlight, 0});
    std::vector<DesignModel> also = inFlight == "state" ? std::vector<DesignModel>() : m_models;
    for (DesignModel& model : also) {
        if (model.follow(inFlight, {}).isEmpty())
            m_models.push_back(model);
    }
    return {};
}

void KillRound::damage(const Step& step)
{
    QFile file(m_project.journalFile());
    const bool mustBeKnown = step.kind == Step::Kind::Cut || step.kind == Step::Kind::Large;
    if (!file.exists() || m_isDamaged || (mustBeKnown && m_models.size() != 1))
        return;
    ++m_figures.damages;
    if (step.kind == Step::Kind::Cut) {
        cut(file, step.number);
        return;
    }
    QByteArray lines
        = step.kind == Step::Kind::Torn ? "zel_resource reset -ip gate" : "zel_resource reset -ip nobody\n";
    m_isDamaged = step.kind != Step::Kind::Large;
    if (step.kind == Step::Kind::Large)
        lines = manyLines(step.number);
    if (!file.open(QIODevice::Append) || file.write(lines) != lines.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
}

// The end of the last change, or all of its last line.
void KillRound::cut(QFile& file, int number)
{
    const QByteArray journal = contentOf(file.fileName());
    const auto lastLine = static_cast<int>(journal.size() - journal.lastIndexOf('\n', journal.size() - 2) - 1);
    if (!m_models[0].hasKept() || !file.resize(journal.size() - 1 - number % lastLine))
        return;
    m_models[0].dropLastKept();
    m_isDamaged = m_wasCut = true;
}

QByteArray KillRound::manyLines(int count)
{
    QByteArray lines;
    m_models[0].startAgain();
    for (int i = 0; i < count; ++i) {
        const QByteArray command
            = QByteArray("zel_setting -id 8000000 -key TXPLL -value ") + (i % 2 == 0 ? "X8" : "X16");
        (void)m_models[0].follow(command, "ok ");
        lines += command + '\n';
    }
    return lines;
}

} // namespace soak
