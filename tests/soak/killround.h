// SPDX-License-Identifier: MIT
#pragma once

#include "tests/soak/room.h"
#include "tests/soak/round.h"

#include <QFile>
#include <QThread>

#include <algorithm>
#include <cmath>
#include <functional>

#include <unistd.h>

namespace soak {

inline constexpr int Last = 1000; // the moment after the last answer
inline constexpr double LongestOpening = 120'000; // microseconds; most of the openings take less
inline constexpr double LongestCommand = 1'500; // microseconds

inline const QByteArray Save = "zel_project save";

// A refusal by a rule says nothing of the kind.
inline bool isForWantOfRoom(const QByteArray& answer)
{
    const QByteArrayList signs{
        "cannot be kept", "cannot be saved", "cannot be made", "cannot be replaced", "cannot be set aside"};
    return answer.startsWith("no ")
        && std::any_of(signs.begin(), signs.end(), [&](const QByteArray& sign) { return answer.contains(sign); });
}

inline QByteArray numbered(const QByteArray& what, int number)
{
    return "-- " + what + ' ' + QByteArray::number(number);
}

// A project that is changed, killed, damaged as a power cut damages it, and opened again; or one whose room comes and
// goes between the commands. These steps begin with two dashes:
//   kill MOMENT        the program ends at some moment of the commands since it opened: 1000 is after the last answer
//   opening MOMENT     the next program ends while it opens the project
//   torn, refused      the journal gets half a line, or a line that no program wrote
//   cut N, large N     the journal loses its end, or gets so many more lines
//   room BYTES         the program has so much room from now on; enough for a number below 0
class KillRound final : public Round
{
public:
    explicit KillRound(Room room = {}, const QString& where = QDir::tempPath())
        : Round(where)
        , m_room(std::move(room))
    { }

    [[nodiscard]] QByteArrayList randomSteps(zeltest::Random& random) override
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
        // The changes that can be undone were kept as well.
        for (int count = 1 + random.below(6); count > 0; --count)
            steps += QByteArrayList{"undo", "state"};
        return steps << numbered("kill", Last);
    }

    [[nodiscard]] QByteArray run(const QByteArrayList& steps) override
    {
        m_project.forgetWork();
        m_left = -1;
        m_models = {DesignModel(m_plan)};
        m_isDamaged = m_wasCut = false;
        m_sent.clear();
        m_made.clear();
        m_problem.clear();
        ++m_figures["rounds"];
        QByteArrayList end{numbered("kill", Last), numbered("kill", Last)};
        if (m_room.leave) { // with room again the program goes on, and everything is there
            const QByteArray change = "zel_setting -id 8003000 -key TXPLL -value ";
            end = QByteArrayList{numbered("room", -1), change + "X8", change + "X10", end[0], Save} + end;
        }
        for (const QByteArray& step : steps + end) {
            if (m_problem.isEmpty())
                make(step);
        }
        m_program.reset();
        if (m_room.leave)
            m_room.leave(-1, ::getpid());
        return m_problem;
    }

    // Here each program ends after its last answer only.
    [[nodiscard]] QByteArray runAgain(const QByteArrayList& steps) override
    {
        m_isAgain = true;
        const QByteArray problem = run(steps);
        m_isAgain = false;
        return problem;
    }

    [[nodiscard]] QByteArrayList made(const QByteArrayList&) const override { return m_made; }

private:
    [[nodiscard]] QByteArrayList stepsWithLittleRoom(zeltest::Random& random) const
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

    void make(const QByteArray& step)
    {
        const QByteArrayList words = step.split(' ');
        const int number = words.last().toInt();
        if (words[0] != "--") {
            if (open())
                m_program->send(step);
            m_sent.append(step);
            return;
        }
        if (words[1] == "kill")
            kill(number);
        else if (words[1] == "opening")
            killOpening(number);
        else if (words[1] == "room")
            leaveRoom(number);
        else
            damage(words[1], number);
        m_made.append(step);
    }

    // Nothing is said of a project to which nothing happened but the death of its program.
    bool open()
    {
        if (m_program)
            return true;
        m_program = newProgram();
        const QByteArray state = m_program->line().mid(6);
        const QByteArray said = m_program->errors();
        if (!state.isEmpty() && m_room.leave)
            m_room.leave(m_left, m_program->id());
        ++m_figures["states compared"];
        QByteArray problem = state.isEmpty() ? "it does not open" : keepThose([&](DesignModel& model) {
            model.startAgain();
            return model.compare(state);
        });
        if (problem.isEmpty() && !m_room.leave && !m_wasCut && said.contains("another state"))
            problem = "its own journal is not used";
        if (problem.isEmpty() && !m_room.leave && !m_isDamaged
            && (said.contains("refused") || said.contains("cut off")))
            problem = "what it wrote cannot be read";
        m_isDamaged = m_wasCut = false;
        if (!problem.isEmpty())
            m_problem = "opened again: " + problem + '\n' + said;
        return problem.isEmpty();
    }

    void leaveRoom(int bytes)
    {
        if (!open() || !readAnswers())
            return;
        m_left = bytes;
        m_room.leave(m_left, m_program->id());
    }

    void kill(int moment)
    {
        if (open() && (m_isAgain || moment == Last))
            readAnswers();
        else
            QThread::usleep(
                static_cast<unsigned long>(LongestCommand * (m_sent.size() + 1) * std::pow(moment / 1000.0, 2)));
        const QByteArrayList answers = m_program->kill();
        m_program.reset();
        ++m_figures["kills"];
        for (const QByteArray& answer : answers)
            follow(answer);
        if (!m_problem.isEmpty() || m_sent.isEmpty())
            return;
        ++m_figures["kills with a command in flight"];
        const QByteArray inFlight = m_sent.first();
        m_sent.clear();
        m_made.append(inFlight);
        for (DesignModel& model :
            inFlight == "state" ? std::vector<DesignModel>() : std::vector<DesignModel>(m_models)) {
            if (model.follow(inFlight, {}).isEmpty())
                m_models.push_back(model);
        }
    }

    void killOpening(int moment)
    {
        if (m_program || m_isAgain)
            kill(Last);
        if (!m_problem.isEmpty() || m_isAgain)
            return;
        const std::unique_ptr<BatchProgram> program = newProgram();
        QThread::usleep(static_cast<unsigned long>(LongestOpening * moment / Last));
        ++m_figures["kills"];
        m_figures["kills before the project was open"] += program->kill().isEmpty() ? 1 : 0;
    }

    bool readAnswers()
    {
        while (m_problem.isEmpty() && !m_sent.isEmpty()) {
            const QByteArray answer = m_program->line();
            if (answer.isEmpty())
                m_problem = "it ended by itself: " + m_program->errors();
            follow(answer);
        }
        return m_problem.isEmpty();
    }

    void follow(const QByteArray& answer)
    {
        if (!m_problem.isEmpty())
            return;
        const QByteArray command = m_sent.takeFirst();
        m_made.append(command);
        const bool isFull = isForWantOfRoom(answer);
        ++m_figures[isFull ? "refusals for want of room" : "answers: " + answer.split(' ').first()];
        QByteArray problem;
        if (!isFull)
            problem = keepThose([&](DesignModel& model) { return model.follow(command, answer); });
        else if (m_left < 0 || !answer.contains(m_room.complaint))
            problem = "refused";
        if (isFull && command == Save) {
            for (DesignModel& model : std::vector<DesignModel>(m_models)) {
                model.wasSaved(); // the rest of it was refused
                m_models.push_back(model);
            }
        }
        if (!problem.isEmpty())
            m_problem = command + ": " + problem + " (" + answer + ')';
    }

    void damage(const QByteArray& how, int number)
    {
        if (m_program)
            kill(Last);
        QFile file(m_project.journalFile());
        const bool mustBeKnown = how == "cut" || how == "large";
        if (!m_problem.isEmpty() || !file.exists() || m_isDamaged || (mustBeKnown && m_models.size() != 1))
            return;
        ++m_figures["damaged journals"];
        if (how == "cut") { // the end of the last change, or all of its last line
            const QByteArray journal = zeltest::contentOf(file.fileName());
            const auto lastLine = journal.size() - journal.lastIndexOf('\n', journal.size() - 2) - 1;
            m_isDamaged = m_wasCut = m_models[0].dropLastKept() && file.resize(journal.size() - 1 - number % lastLine);
            return;
        }
        const QByteArray lines = how == "large" ? manyLines(number)
            : how == "torn"                     ? QByteArray("zel_resource reset -ip gate")
                                                : QByteArray("zel_resource reset -ip nobody\n");
        m_isDamaged = how != "large";
        if (!file.open(QIODevice::Append) || file.write(lines) != lines.size())
            qFatal("cannot write %s", qPrintable(file.fileName()));
    }

    [[nodiscard]] QByteArray manyLines(int count)
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

    // Drops the models that a fact contradicts. Returns the contradiction when none is left.
    [[nodiscard]] QByteArray keepThose(const std::function<QByteArray(DesignModel&)>& contradiction)
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

    const Room m_room; // empty where there is enough
    int m_left = -1; // bytes of room, enough below 0
    std::unique_ptr<BatchProgram> m_program; // null: the last one was killed
    QByteArrayList m_sent; // commands without an answer
    QByteArrayList m_made; // steps
    QByteArray m_problem; // the first; empty while all is well
    std::vector<DesignModel> m_models; // what may be the case: more than one after a command without an answer
    bool m_isDamaged = false; // since the project was opened
    bool m_wasCut = false; // since then, too
    bool m_isAgain = false; // runAgain() is at work
};

} // namespace soak
