// SPDX-License-Identifier: MIT
#pragma once

#include "tests/program/batchprogram.h"
#include "tests/program/sampleproject.h"
#include "tests/soak/designmodel.h"
#include "tests/support/random.h"

#include <QDir>

#include <memory>

namespace soak {

// What a campaign came to.
struct Figures
{
    int rounds = 0;
    int kills = 0;
    int killsOpening = 0; // of those, before the project was open
    int killsInFlight = 0; // with a command that had no answer
    int damages = 0;
    int states = 0; // compared
    int confirmed = 0; // commands
    int refusals = 0; // for want of room or because of the other program
};

// A project to which things happen, a step each: commands to the programs that have it, as one would type them, and
// what begins with two dashes. A program answers a command with a line: "ok", with the sites that a placement led to;
// "no" and why; "state" and all there is to know, which is also the first thing that it says.
class Round
{
public:
    explicit Round(const QString& where = QDir::tempPath());
    virtual ~Round() = default;
    Round(const Round&) = delete;
    Round& operator=(const Round&) = delete;

    [[nodiscard]] virtual QByteArrayList randomSteps(zeltest::Random& random) = 0;

    // What went wrong in the steps; nothing when all went well.
    [[nodiscard]] virtual QByteArray run(const QByteArrayList& steps) = 0;
    // The same without what is left to chance.
    [[nodiscard]] virtual QByteArray runAgain(const QByteArrayList& steps) { return run(steps); }
    // What came to be done of the steps that were run.
    [[nodiscard]] virtual QByteArrayList made(const QByteArrayList& steps) const { return steps; }

    [[nodiscard]] QByteArray figures() const;

protected:
    // The commands that follow are about a few resources, so that they meet each other.
    void chooseFew(zeltest::Random& random);
    [[nodiscard]] QByteArray randomCommand(zeltest::Random& random) const;
    [[nodiscard]] std::unique_ptr<BatchProgram> newProgram() const;

    const SampleProject m_project;
    const Plan m_plan{m_project.path()};
    Figures m_figures;

private:
    [[nodiscard]] QByteArray randomSetting(zeltest::Random& random) const;

    const QString m_script;
    QByteArrayList m_few; // paths
};

} // namespace soak
