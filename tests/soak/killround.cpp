// SPDX-License-Identifier: MIT
#include "tests/soak/killround.h"

#include <QFile>
#include <QThread>

#include <algorithm>
#include <cmath>

#include <unistd.h>

namespace soak {

namespace {

constexpr int Last = 1000; // moment
constexpr double LongestOpening = 120'000; // us; most of the openings take less
constexpr double LongestCommand = 1'500; // us

const QByteArray Save = "zel_project save";

// Refusals by a rule say nothing of the kind.
bool isForWantOfRoom(const QByteArray& answer)
{
    const QByteArrayList signs{
        "cannot be kept", "cannot be saved", "cannot be made", "cannot be replaced", "cannot be set aside"};
    return answer.startsWith("no ")
        && std::any_of(signs.begin(), signs.end(), [&](const QByteArray& sign) { return answer.contains(sign); });
}

QByteArray numbered(const QByteArray& what, int number)
{
    return "-- " + what + ' ' + QByteArray::number(number);
}

} // namespace

KillRound::KillRound(Room room, const QString& where)
    : Round(where)
    , m_room(std::move(room))
{ }

QByteArrayList KillRound::randomSteps(zeltest::Random& random)
{
    chooseFew(random);
    if (m_room.leave)
        return stepsWithLittleRoom(random);
    static const QByteArrayList damages{"torn", "refused", "cut", "large"};
    QByteArrayList steps;
    for (int session = 2 + random.below(4); session > 0; --session) {
        if (random.below(3) == 0)
            steps.append(numbered(random.oneOf(damages), 500 + random.below(4000)));
        while (random.below(3) == 0)
            steps.append(numbered("opening", random.below(Last)));
        const bool savesOften = random.below(4) == 0;
        for (int count = random.below(60); count > 0; --count) {
            steps.append(randomCommand(random));
            if (savesOften && random.below(3) == 0)
                steps.append(Save);
        }
        steps.append(numbered("kill", random.below(Last)));
    }
    // What can be taken back was kept as well.
    for (int count = 1 + random.below(6); count > 0; --count)
        steps += QByteArrayList{"undo", "state"};
    return steps << numbered("kill", Last);
}

QByteArrayList KillRound::stepsWithLittleRoom(zeltest::Random& random) const
{
    QByteArrayList steps;
    for (int count = 20 + random.below(60); count > 0; --count) {
        const int kind = random.below(100);
        if (kind < 12)
            steps.append(numbered("room", random.below(3) == 0 ? 4096 * random.below(4) : random.below(3000)));
        else if (kind < 18)
            steps.append(numbered("room", -1));
        else if (kind < 21)
            steps.append(numbered("kill", Last));
        else
            steps += QByteArrayList{kind < 30 ? Save : randomCommand(random), "state"};
    }
    return steps;
}

QByteArray KillRound::run(const QByteArrayList& steps)
{
    m_project.forgetWork();
    m_left = -1;
    m_models = {DesignModel(m_plan)};
    m_isDamaged = m_wasCut = false;
    m_sent.clear();
    m_made.clear();
    ++m_figures.rounds;
    QByteArrayList end{numbered("kill", Last), numbered("kill", Last)};
    if (m_room.leave) { // with room again it goes on, and all is there
        const QByteArray change = "zel_setting -id 8003000 -key TXPLL -value ";
        end = QByteArrayList{numbered("room", -1), change + "X8", change + "X10", end[0], Save} + end;
    }
    QByteArray problem;
    for (const QByteArray& step : steps + end) {
        problem = make(step);
        if (!problem.isEmpty())
            break;
    }
    m_program.reset();
    if (m_room.leave)
        m_room.leave(-1, ::getpid());
    return problem;
}

// Each program ends after its last answer only.
QByteArray KillRound::runAgain(const QByteArrayList& steps)
{
    m_isAgain = true;
    const QByteArray problem = run(steps);
    m_isAgain = false;
    return problem;
}

QByteArray KillRound::make(const QByteArray& step)
{
    const QByteArrayList words = step.split(' ');
    if (words[0] != "--") {
        const QByteArray problem = open();
        if (problem.isEmpty()) {
            m_program->send(step);
            m_sent.append(step);
        }
        return problem;
    }
    const int number = words.last().toInt();
    QByteArray problem;
    if (words[1] == "kill")
        problem = kill(number);
    else if (words[1] == "opening")
        problem = killOpening(number);
    else if (words[1] == "room")
        problem = leaveRoom(number);
    else
        problem = damage(words[1], number);
    m_made.append(step);
    return problem;
}

QByteArray KillRound::keepThose(const std::function<QByteArray(DesignModel&)>& contradiction)
{
    std::vector<DesignModel> possible;
    QByteArray problem;
    for (DesignModel& model : m_models) {
        problem = contradiction(model);
        if (problem.isEmpty())
            possible.push_back(model);
    }
    m_models = possible;
    return m_models.empty() ? problem : QByteArray();
}

// Nothing is said of a project to which nothing happened but the death of its program.
QByteArray KillRound::open()
{
    if (m_program)
        return {};
    m_program = newProgram();
    const QByteArray state = m_program->line().mid(6);
    const QByteArray said = m_program->errors();
    if (state.isEmpty())
        return "does not open: " + said;
    if (m_room.leave)
        m_room.leave(m_left, m_program->id());
    ++m_figures.states;
    QByteArray problem = keepThose([&](DesignModel& model) {
        model.startAgain();
        return model.compare(state);
    });
    if (problem.isEmpty() && !m_room.leave && !m_wasCut && said.contains("another state"))
        problem = "its own journal is not used";
    if (problem.isEmpty() && !m_room.leave && !m_isDamaged && (said.contains("refused") || said.contains("cut off")))
        problem = "what it wrote cannot be read";
    m_isDamaged = m_wasCut = false;
    return problem.isEmpty() ? problem : "opened again: " + problem + '\n' + said;
}

QByteArray KillRound::leaveRoom(int bytes)
{
    QByteArray problem = open();
    if (problem.isEmpty())
        problem = readAnswers();
    m_left = bytes;
    m_room.leave(m_left, m_program->id());
    return problem;
}

QByteArray KillRound::kill(int moment)
{
    QByteArray problem = open();
    if (problem.isEmpty() && (m_isAgain || moment == Last))
        problem = readAnswers();
    else
        QThread::usleep(
            static_cast<unsigned long>(LongestCommand * (m_sent.size() + 1) * std::pow(moment / 1000.0, 2)));
    const QByteArrayList answers = m_program->kill();
    m_program.reset();
    ++m_figures.kills;
    for (int i = 0; problem.isEmpty() && i < answers.size(); ++i)
        problem = follow(answers[i]);
    if (!problem.isEmpty() || m_sent.isEmpty())
        return problem;
    ++m_figures.killsInFlight;
    const QByteArray inFlight = m_sent.first();
    m_sent.clear();
    m_made.append(inFlight);
    for (DesignModel& model : inFlight == "state" ? std::vector<DesignModel>() : std::vector<DesignModel>(m_models)) {
        if (model.follow(inFlight, {}).isEmpty())
            m_models.push_back(model);
    }
    return {};
}

QByteArray KillRound::killOpening(int moment)
{
    const QByteArray problem = m_program || m_isAgain ? kill(Last) : QByteArray();
    if (!problem.isEmpty() || m_isAgain)
        return problem;
    const std::unique_ptr<BatchProgram> program = newProgram();
    QThread::usleep(static_cast<unsigned long>(LongestOpening * moment / Last));
    ++m_figures.kills;
    m_figures.killsOpening += program->kill().isEmpty() ? 1 : 0;
    return {};
}

QByteArray KillRound::readAnswers()
{
    QByteArray problem;
    while (problem.isEmpty() && !m_sent.isEmpty()) {
        const QByteArray answer = m_program->line();
        problem = answer.isEmpty() ? "it ended by itself: " + m_program->errors() : follow(answer);
    }
    return problem;
}

QByteArray KillRound::follow(const QByteArray& answer)
{
    const QByteArray command = m_sent.takeFirst();
    m_made.append(command);
    const bool isFull = isForWantOfRoom(answer);
    m_figures.confirmed += answer.startsWith("ok") ? 1 : 0;
    m_figures.states += answer.startsWith("state") ? 1 : 0;
    m_figures.refusals += isFull ? 1 : 0;
    if (isFull && (m_left < 0 || !answer.contains(m_room.complaint)))
        return command + ": " + answer;
    if (isFull && command == Save) {
        for (DesignModel& model : std::vector<DesignModel>(m_models)) {
            model.wasSaved(); // the rest of it was refused
            m_models.push_back(model);
        }
    }
    const QByteArray problem
        = isFull ? QByteArray() : keepThose([&](DesignModel& model) { return model.follow(command, answer); });
    return problem.isEmpty() ? problem : command + ": " + problem + " (" + answer + ')';
}

QByteArray KillRound::damage(const QByteArray& how, int number)
{
    const QByteArray problem = m_program ? kill(Last) : QByteArray();
    QFile file(m_project.journalFile());
    const bool mustBeKnown = how == "cut" || how == "large";
    if (!problem.isEmpty() || !file.exists() || m_isDamaged || (mustBeKnown && m_models.size() != 1))
        return problem;
    ++m_figures.damages;
    if (how == "cut") { // the end of the last change, or all of its last line
        const QByteArray journal = contentOf(file.fileName());
        const auto lastLine = journal.size() - journal.lastIndexOf('\n', journal.size() - 2) - 1;
        m_isDamaged = m_wasCut = m_models[0].dropLastKept() && file.resize(journal.size() - 1 - number % lastLine);
        return {};
    }
    const QByteArray lines = how == "large" ? manyLines(number)
        : how == "torn"                     ? QByteArray("zel_resource reset -ip gate")
                                            : QByteArray("zel_resource reset -ip nobody\n");
    m_isDamaged = how != "large";
    if (!file.open(QIODevice::Append) || file.write(lines) != lines.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return {};
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
