// SPDX-License-Identifier: MIT
#pragma once

#include "tests/soak/round.h"

#include <array>

namespace soak {

// Two programs on one project. The first that changes it has it until it ends; the other one may look. A command begins
// with the number of its program; these steps begin with two dashes:
//   kill WHICH                    the program ends and is started again
//   both COMMAND | COMMAND        both programs get a command at once
//   race WHICH COMMAND            the other program opens the project meanwhile
class SharedRound final : public Round
{
public:
    [[nodiscard]] QByteArrayList randomSteps(zeltest::Random& random) override
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

    [[nodiscard]] QByteArray run(const QByteArrayList& steps) override
    {
        const QByteArrayList restart{"-- kill 0", "-- kill 1"};
        m_programs = {};
        m_project.forgetWork();
        m_known = nothingHappened();
        ++m_figures["rounds"];
        QByteArray problem;
        for (const QByteArray& step : restart + steps + restart) {
            if (problem.isEmpty())
                problem = make(step);
        }
        m_programs = {};
        return problem;
    }

private:
    // The project as one of the programs knows it.
    struct View
    {
        DesignModel model;
        int version; // the project's when the program read or changed it
    };
    // Everything that can be known without asking the programs.
    struct Knowledge
    {
        DesignModel truth; // what a program would read now
        std::array<View, 2> views; // one for each program
        int owner = -1; // the program that may change the project
        int version = 0; // grows with each change
    };

    [[nodiscard]] QByteArray make(const QByteArray& step)
    {
        if (step.startsWith("-- both "))
            return together({step.mid(8, step.indexOf(" | ") - 8), step.mid(step.indexOf(" | ") + 3)});
        if (step.startsWith("-- race "))
            return race(step.mid(10), step[8] - '0');
        if (step.startsWith("-- kill "))
            return open(step[8] - '0');
        const int which = step[0] - '0';
        m_programs[which]->send(step.mid(2));
        return judge(which, step.mid(2), m_programs[which]->line());
    }

    [[nodiscard]] QByteArray open(int which)
    {
        std::unique_ptr<BatchProgram>& program = m_programs[which];
        m_figures["kills"] += program ? 1 : 0;
        program.reset();
        m_known.owner = m_known.owner == which ? -1 : m_known.owner;
        program = newProgram();
        ++m_figures["states compared"];
        View& view = m_known.views[which];
        view = {m_known.truth, m_known.version};
        view.model.startAgain();
        const QByteArray problem = view.model.compare(program->line().mid(6));
        return problem.isEmpty() ? problem : "opened again: " + problem + '\n' + program->errors();
    }

    // Either of the two commands may have been the first.
    [[nodiscard]] QByteArray together(const QByteArrayList& commands)
    {
        m_programs[0]->send(commands[0]);
        m_programs[1]->send(commands[1]);
        const QByteArrayList answers{m_programs[0]->line(), m_programs[1]->line()};
        const Knowledge before = m_known;
        QByteArray problem;
        // One may have been refused for the moment in which the other program looked whether it may change the project.
        m_isTogether = true;
        for (int first : {0, 1}) {
            m_known = before;
            problem.clear();
            for (int which : {first, 1 - first}) {
                if (problem.isEmpty())
                    problem = judge(which, commands[which], answers[which]);
            }
            if (problem.isEmpty())
                break;
        }
        m_isTogether = false;
        return problem.isEmpty() ? problem : "together: " + problem;
    }

    // A program reads the files while another one writes them. Whatever it has seen, it does not overwrite with it what
    // the other one confirmed.
    [[nodiscard]] QByteArray race(const QByteArray& command, int which)
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

    [[nodiscard]] QByteArray judge(int which, const QByteArray& command, const QByteArray& answer)
    {
        const QByteArray problem = answer.isEmpty() ? "it ended by itself" : objection(which, command, answer);
        return problem.isEmpty() ? problem
                                 : QByteArray::number(which) + ": " + command + ": " + problem + " (" + answer + ')';
    }

    [[nodiscard]] QByteArray objection(int which, const QByteArray& command, const QByteArray& answer)
    {
        View& view = m_known.views[which];
        const bool isTaken = answer.contains("is open in another program");
        const bool isPassed = answer.contains("another program has changed the project");
        m_figures["refusals because of the other program"] += isTaken || isPassed ? 1 : 0;
        if (isTaken)
            return isOwnedByOther(which) || m_isTogether ? "" : "refused although nobody has the project";
        if (isPassed)
            return view.version != m_known.version ? "" : "refused although nobody has changed it";
        const std::vector<State> seen = view.model.kept();
        const QByteArray problem = view.model.follow(command, answer);
        if (!problem.isEmpty() || answer.startsWith("no ")
            || (view.model.kept().size() == seen.size() && command != "zel_project save"))
            return problem; // no change
        ++m_figures["changes confirmed"];
        if (isOwnedByOther(which))
            return "accepted while the other program has the project";
        if (m_known.owner < 0 && !(seen == m_known.truth.kept()))
            return "accepted on top of a state that has passed";
        m_known.owner = which;
        m_known.truth = view.model;
        view.version = ++m_known.version;
        return {};
    }

    [[nodiscard]] bool isOwnedByOther(int which) const { return m_known.owner == 1 - which; }
    [[nodiscard]] Knowledge nothingHappened() const
    {
        const DesignModel fresh(m_plan);
        return {fresh, {View{fresh, 0}, View{fresh, 0}}};
    }

    std::array<std::unique_ptr<BatchProgram>, 2> m_programs;
    Knowledge m_known{nothingHappened()};
    bool m_isTogether = false; // the commands that are being judged were sent at the same time
};

} // namespace soak
