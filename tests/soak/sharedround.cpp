// SPDX-License-Identifier: MIT
#include "tests/soak/sharedround.h"

namespace soak {

SharedRound::Knowledge SharedRound::nothingHappened() const
{
    const DesignModel fresh(m_plan);
    return {fresh, {View{fresh, 0}, View{fresh, 0}}};
}

QByteArrayList SharedRound::randomSteps(zeltest::Random& random)
{
    chooseFew(random);
    QByteArrayList steps;
    for (int count = 20 + random.below(60); count > 0; --count) {
        const QByteArray which = QByteArray::number(random.below(2));
        const int kind = random.below(100);
        if (kind < 12)
            steps.append("-- kill " + which);
        else if (kind < 25)
            steps.append("-- both " + randomCommand(random) + " | " + randomCommand(random));
        else if (kind < 28)
            steps.append("-- race " + which + ' '
                + (random.below(3) > 0 ? QByteArray("zel_project save") : randomCommand(random)));
        else
            steps.append(which + ' ' + randomCommand(random));
    }
    return steps;
}

QByteArray SharedRound::run(const QByteArrayList& steps)
{
    const QByteArrayList restart{"-- kill 0", "-- kill 1"};
    m_programs = {};
    m_project.forgetWork();
    m_known = nothingHappened();
    ++m_figures.rounds;
    QByteArray problem;
    for (const QByteArray& step : restart + steps + restart) {
        if (problem.isEmpty())
            problem = make(step);
    }
    m_programs = {};
    return problem;
}

QByteArray SharedRound::make(const QByteArray& step)
{
    if (step.startsWith("-- both "))
        return together({step.mid(8, step.indexOf(" | ") - 8), step.mid(step.indexOf(" | ") + 3)});
    if (step.startsWith("-- race "))
        return race(step.mid(10), step[8] == '1' ? 1 : 0);
    if (step.startsWith("-- kill "))
        return open(step[8] == '1' ? 1 : 0);
    const std::size_t which = step[0] == '1' ? 1 : 0;
    m_programs[which]->send(step.mid(2));
    return judge(which, step.mid(2), m_programs[which]->line());
}

QByteArray SharedRound::open(std::size_t which)
{
    std::unique_ptr<BatchProgram>& program = m_programs[which];
    m_figures.kills += program ? 1 : 0;
    program.reset();
    release(which);
    program = newProgram();
    ++m_figures.states;
    View& view = m_known.views[which];
    view = {m_known.truth, m_known.version};
    view.model.startAgain();
    const QByteArray problem = view.model.compare(program->line().mid(6));
    return problem.isEmpty() ? problem : "opened again: " + problem + '\n' + program->errors();
}

// Either of the two may have been the first.
QByteArray SharedRound::together(const QByteArrayList& commands)
{
    m_programs[0]->send(commands[0]);
    m_programs[1]->send(commands[1]);
    const QByteArrayList answers{m_programs[0]->line(), m_programs[1]->line()};
    const Knowledge before = m_known;
    QByteArray problem;
    // The one may have been refused for the moment in which the other one looked whether it may change the project.
    m_isTogether = true;
    for (int first : {0, 1}) {
        m_known = before;
        problem.clear();
        for (int which : {first, 1 - first}) {
            if (problem.isEmpty())
                problem = judge(static_cast<std::size_t>(which), commands[which], answers[which]);
        }
        if (problem.isEmpty())
            break;
    }
    m_isTogether = false;
    return problem.isEmpty() ? problem : "together: " + problem;
}

// A program reads the files while another one writes them. Whatever it has seen, it does not write it over what the
// other one confirmed.
QByteArray SharedRound::race(const QByteArray& command, std::size_t which)
{
    if (isOwnedByOther(which))
        return {};
    BatchProgram& writer = *m_programs[which];
    std::unique_ptr<BatchProgram>& reader = m_programs[1 - which];
    reader = newProgram();
    writer.send(command);
    const QByteArray problem = judge(which, command, writer.line());
    if (!problem.isEmpty())
        return problem;
    (void)reader->line();
    (void)writer.kill();
    const QByteArray change = "zel_setting -id 8003000 -key TXPLL -value X25";
    bool isMade = true;
    for (const QByteArray& later : {change, QByteArray("zel_project save")}) {
        reader->send(later);
        isMade = isMade && reader->line().startsWith("ok");
    }
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

QByteArray SharedRound::judge(std::size_t which, const QByteArray& command, const QByteArray& answer)
{
    const QByteArray problem = answer.isEmpty() ? "it ended by itself" : objection(which, command, answer);
    return problem.isEmpty() ? problem
                             : QByteArray::number(int(which)) + ": " + command + ": " + problem + " (" + answer + ')';
}

QByteArray SharedRound::objection(std::size_t which, const QByteArray& command, const QByteArray& answer)
{
    View& view = m_known.views[which];
    const bool isTaken = answer.contains("is being changed by another program");
    const bool isPassed = answer.contains("another program has changed the project");
    m_figures.refusals += isTaken || isPassed ? 1 : 0;
    if (isTaken)
        return isOwnedByOther(which) || m_isTogether ? "" : "refused although nobody has the project";
    if (isPassed)
        return view.version != m_known.version ? "" : "refused although nobody has changed it";
    const std::vector<State> seen = view.model.kept();
    const QByteArray problem = view.model.follow(command, answer);
    if (!problem.isEmpty() || answer.startsWith("no ")
        || (view.model.kept().size() == seen.size() && command != "zel_project save"))
        return problem; // no change
    ++m_figures.confirmed;
    if (isOwnedByOther(which))
        return "accepted while the other program has the project";
    if (m_known.owner < 0 && !(seen == m_known.truth.kept()))
        return "accepted on top of a state that has passed";
    m_known.owner = static_cast<int>(which);
    m_known.truth = view.model;
    view.version = ++m_known.version;
    return {};
}

} // namespace soak
