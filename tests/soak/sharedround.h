// SPDX-License-Identifier: MIT
#pragma once

#include "tests/program/sampleproject.h"
#include "tests/soak/soakprogram.h"
#include "tests/soak/soaksteps.h"

#include <array>
#include <memory>

namespace soak {

// Two programs on one project. The first that changes it has it until it ends; the other one may look.
class SharedRound final
{
public:
    SharedRound(const SampleProject& project, const QString& script, const Plan& plan, Figures& figures);

    [[nodiscard]] static Steps randomSteps(const Plan& plan, zeltest::Random& random);

    [[nodiscard]] QByteArray run(const Steps& steps);

private:
    // What one may know while it stands, apart from the programs.
    struct View
    {
        DesignModel model;
        int version; // of the project when it was read, or as it made it
    };
    struct Knowledge
    {
        DesignModel truth; // what a program would read now
        std::vector<View> views; // one for each program
        int owner = -1;
        int version = 0; // grows with each change
    };

    [[nodiscard]] QByteArray make(const Step& step);
    [[nodiscard]] QByteArray open(int which);
    [[nodiscard]] QByteArray together(const QByteArrayList& commands);
    [[nodiscard]] QByteArray race(const QByteArray& command, int which);
    [[nodiscard]] QByteArray judge(int which, const QByteArray& command, const QByteArray& answer);
    [[nodiscard]] QByteArray judgeRefusal(int which, const QByteArray& command, const QByteArray& answer);

    const SampleProject& m_project;
    const QString m_script;
    const Plan& m_plan;
    Figures& m_figures;
    std::array<std::unique_ptr<SoakProgram>, 2> m_programs;
    Knowledge m_known;
    bool m_isTogether = false; // two commands are being judged that were sent at the same time
};

} // namespace soak
