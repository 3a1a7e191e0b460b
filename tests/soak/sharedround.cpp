// SPDX-License-Identifier: MIT
#include "tests/soak/sharedround.h"

namespace soak {

SharedRound::SharedRound(const SampleProject& project, const QString& script, const Plan& plan, Figures& figures)
    : m_project(project)
    , m_script(script)
    , m_plan(plan)
    , m_figures(figures)
    , m_known{DesignModel(plan), {}}
{ }

Steps SharedRound::randomSteps(const Plan& plan, zeltest::Random& random)
{
    Steps steps;
    Commands commands(plan, random);
    for (int count = 20 + random.below(60); count > 0; --count) {
        const int which = random.below(2);
        const int kind = random.below(100);
        if (kind < 12)
            steps.push_back({Step::Kind::Kill, {}, which});
        else if (kind < 25)
            steps.push_back({Step::Kind::Together, commands.next() + '\n' + commands.next(), 0});
        else if (kind < 28)
            steps.push_back({Step::Kind::Race, random.below(3) > 0 ? "zel_project save" : commands.next(), which});
        else
            steps.push_back({Step::Kind::Command, commands.next(), which});
    }
    return steps;
}

QByteArray SharedRound::run(const Steps& steps)
{
    m_programs = {};
    m_project.forgetWork();
    const DesignModel fresh(m_plan);
    m_known = {fresh, {{fresh, 0}, {fresh, 0}}};
    ++m_figures.rounds;
    Steps all = steps;
    all.insert(all.begin(), {{Step::Kind::Kill, {}, 0}, {Step::Kind::Kill, {}, 1}});
    all.insert(all.end(), {{Step::Kind::Kill, {}, 0}, {Step::Kind::Kill, {}, 1}});
    QByteArray problem;
    for (std::size_t i = 0; problem.isEmpty() && i < all.size(); ++i)
        problem = make(all[i]);
    m_programs = {};
    return problem;
}

QByteArray SharedRound::make(const Step& step)
{
    switch (step.kind) {
    case Step::Kind::Kill:
        return open(step.number);
    case Step::Kind::Together:
        return together(step.command.split('\n'));
    case Step::Kind::Race:
        return race(step.command, step.number);
    default:
        return judge(step.number, step.command, m_programs[static_cast<std::size_t>(step.number)]->ask(step.command));
    }
}

QByteArray SharedRound::open(int which)
{
    std::unique_ptr<SoakProgram>& program = m_programs[static_cast<std::size_t>(which)];
    m_figures.kills += program ? 1 : 0;
    program.reset();
    if (m_known.owner == which)
        m_known.owner = -1;
    program = std::make_unique<SoakProgram>(m_project.path(), m_script);
    ++m_figures.states;
    View& view = m_known.views[static_cast<std::size_t>(which)];
    view = {m_known.truth, m_known.version};
    view.model.startAgain();
    const QByteArray problem = view.model.compare(program->opened());
    return problem.isEmpty() ? problem : "opened again: " + problem + '\n' + program->errors();
}

// Either of the two may have been the first.
QByteArray SharedRound::together(const QByteArrayList& commands)
{
    for (std::size_t i = 0; i < 2; ++i) {
        m_programs[i]->send(commands[static_cast<int>(i)]);
        m_programs[i]->flush();
    }
    const QByteArrayList answers{m_programs[0]->answer(), m_programs[1]->answer()};
    const Knowledge before = m_known;
    QByteArray problem;
    // The one may have been refused for the moment in which the other one looked whether it may change the project.
    m_isTogether = true;
    for (int first : {0, 1}) {
        m_known = before;
        problem = judge(first, commands[first], answers[first]);
        if (problem.isEmpty())
            problem = judge(1 - first, commands[1 - first], answers[1 - first]);
        if (problem.isEmpty())
            break;
    }
    m_isTogether = false;
    return problem.isEmpty() ? problem : "together: " + problem;
}

// A program reads the files while another one writes them. Whatever it has seen, it does not write it over what the
// other one confirmed.
QByteArray SharedRound::race(const QByteArray& command, int which)
{
    SoakProgram& writer = *m_programs[static_cast<std::size_t>(which)];
    std::unique_ptr<SoakProgram>& reader = m_programs[static_cast<std::size_t>(1 - which)];
    if (m_known.owner == 1 - which)
        return {};
    reader = std::make_unique<SoakProgram>(m_project.path(), m_script);
    writer.send(command);
    writer.flush();
    const QByteArray problem = judge(which, command, writer.answer());
    if (!problem.isEmpty())
        return problem;
    (void)reader->opened();
    (void)writer.kill();
    if (m_known.owner == which)
        m_known.owner = -1;
    const QByteArray change = "zel_setting -id 8003000 -key TXPLL -value X25";
    const bool isMade = reader->ask(change).startsWith("ok") && reader->ask("zel_project save").startsWith("ok");
    if (isMade) {
        m_known.truth.startAgain();
        (void)m_known.truth.follow(change, "ok ");
        m_known.truth.wasSaved();
    }
    ++m_known.version;
    m_known.owner = -1;
    const QByteArray other = open(1 - which);
    return other.isEmpty() ? open(which) : "after a race: " + other;
}

QByteArray SharedRound::judge(int which, const QByteArray& command, const QByteArray& answer)
{
    View& view = m_known.views[static_cast<std::size_t>(which)];
    const QByteArray place = QByteArray::number(which) + ": " + command + ": ";
    if (answer.startsWith("no "))
        return judgeRefusal(which, command, answer);
    const std::size_t before = view.model.kept().size();
    const std::vector<State> seen = view.model.kept();
    const QByteArray problem = answer.isEmpty() ? "it ended by itself" : view.model.follow(command, answer);
    if (!problem.isEmpty())
        return place + problem + " (" + answer + ')';
    if (view.model.kept().size() == before && command != "zel_project save")
        return {}; // no change
    ++m_figures.confirmed;
    if (m_known.owner == 1 - which)
        return place + "accepted while the other program has the project";
    if (m_known.owner < 0 && !(seen == m_known.truth.kept()))
        return place + "accepted on top of a state that has passed";
    m_known.owner = which;
    m_known.truth = view.model;
    view.version = ++m_known.version;
    return {};
}

QByteArray SharedRound::judgeRefusal(int which, const QByteArray& command, const QByteArray& answer)
{
    View& view = m_known.views[static_cast<std::size_t>(which)];
    const QByteArray place = QByteArray::number(which) + ": " + command + ": ";
    const bool isTaken = answer.contains("is being changed by another program");
    const bool isPassed = answer.contains("another program has changed the project");
    m_figures.refusals += isTaken || isPassed ? 1 : 0;
    if (isTaken)
        return m_known.owner == 1 - which || m_isTogether ? QByteArray()
                                                          : place + "refused although nobody has the project";
    if (isPassed)
        return view.version != m_known.version ? QByteArray() : place + "refused although nobody has changed it";
    const QByteArray problem = view.model.follow(command, answer);
    return problem.isEmpty() ? problem : place + problem + " (" + answer + ')';
}

} // namespace soak
