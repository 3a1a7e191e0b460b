// SPDX-License-Identifier: MIT
#pragma once

#include "tests/soak/designmodel.h"
#include "tests/support/random.h"

#include <QByteArray>

#include <functional>
#include <vector>

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

// One thing that happens in a round.
struct Step
{
    enum class Kind {
        Command,
        Kill, // of the program, at some moment of the commands since it opened
        KillOpening, // of the next program, at some moment of its opening
        Torn, // half a line at the end of the journal
        Refused, // a line that no program wrote
        Cut, // the journal's end is lost
        Large, // many more lines at its end: `number`
        Room, // `number` bytes are left from now on; below 0: enough
        Together, // one command for each of two programs, at once
        Race, // a program opens while the other one makes the command
    };

    Kind kind = Kind::Command;
    QByteArray command; // two lines for two programs
    int number = 0; // also: which of two programs
};
using Steps = std::vector<Step>;

// A line each, for people.
[[nodiscard]] QByteArray text(const Steps& steps);

// What went wrong in the steps; nothing when all went well.
using Trial = std::function<QByteArray(const Steps&)>;

// Leaves out steps as long as something goes wrong without them. Ends after so many milliseconds.
[[nodiscard]] Steps shortest(Steps steps, const Trial& trial, qint64 limit);

// A command about one of a few resources, so that they meet each other.
class Commands final
{
public:
    Commands(const Plan& plan, zeltest::Random& random);
    [[nodiscard]] QByteArray next();

private:
    template <typename List> [[nodiscard]] auto oneOf(const List& list)
    {
        return *std::next(list.begin(), m_random.below(static_cast<int>(list.size())));
    }
    [[nodiscard]] QByteArray setting();
    [[nodiscard]] QByteArray configuration(const QByteArray& path);
    [[nodiscard]] QByteArray placement(const QByteArray& path);

    const Plan& m_plan;
    zeltest::Random& m_random;
    std::vector<QByteArray> m_paths;
};

} // namespace soak
