// SPDX-License-Identifier: MIT
#pragma once

#include "tests/program/sampleproject.h"
#include "tests/soak/soakprogram.h"
#include "tests/soak/soaksteps.h"

#include <QFile>

namespace soak {

// A project that is changed, killed, damaged as a power cut damages it, and opened again, as the steps say.
class KillRound final
{
public:
    enum class Moments { Random, AfterTheLastAnswer };

    KillRound(const SampleProject& project, const QString& script, const Plan& plan, Figures& figures);

    [[nodiscard]] static Steps randomSteps(const Plan& plan, zeltest::Random& random);

    [[nodiscard]] QByteArray run(const Steps& steps, Moments moments);

    // What of the steps came to be done.
    [[nodiscard]] const Steps& made() const { return m_made; }

private:
    [[nodiscard]] QByteArray session(const QByteArrayList& commands, int moment);
    [[nodiscard]] QByteArray killOpening(int moment);
    [[nodiscard]] QByteArray open(SoakProgram& program);
    [[nodiscard]] QByteArray followAll(const QByteArrayList& commands, const QByteArrayList& answers);
    void damage(const Step& step);
    void cut(QFile& file, int number);
    [[nodiscard]] QByteArray manyLines(int count);
    // Drops the models that a fact contradicts; returns what it contradicts when none is left.
    template <typename Fact> [[nodiscard]] QByteArray keepThose(const Fact& fact);

    const SampleProject& m_project;
    const QString m_script;
    const Plan& m_plan;
    Figures& m_figures;
    Moments m_moments = Moments::Random;
    std::vector<DesignModel> m_models; // what may be; more than one after a command without an answer
    bool m_isDamaged = false; // since it was opened
    bool m_wasCut = false;
    Steps m_made;
};

} // namespace soak
