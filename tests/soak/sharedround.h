// SPDX-License-Identifier: MIT
#pragma once

#include "tests/soak/round.h"

#include <array>

namespace soak {

// Two programs on one project. The first that changes it has it until it ends; the other one may look. A step begins
// with the number of its program, or with two dashes:
//   kill WHICH                    the program ends and is started again
//   both COMMAND | COMMAND        at once
//   race WHICH COMMAND            the other program opens the project meanwhile
class SharedRound final : public Round
{
public:
    [[nodiscard]] QByteArrayList randomSteps(zeltest::Random& random) override;
    [[nodiscard]] QByteArray run(const QByteArrayList& steps) override;

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
        std::array<View, 2> views; // one for each program
        int owner = -1;
        int version = 0; // grows with each change
    };

    [[nodiscard]] QByteArray make(const QByteArray& step);
    [[nodiscard]] QByteArray open(std::size_t which);
    [[nodiscard]] QByteArray together(const QByteArrayList& commands);
    [[nodiscard]] QByteArray race(const QByteArray& command, std::size_t which);
    [[nodiscard]] QByteArray judge(std::size_t which, const QByteArray& command, const QByteArray& answer);
    [[nodiscard]] QByteArray objection(std::size_t which, const QByteArray& command, const QByteArray& answer);
    [[nodiscard]] bool isOwnedByOther(std::size_t which) const { return m_known.owner == static_cast<int>(1 - which); }
    void release(std::size_t which) { m_known.owner = m_known.owner == static_cast<int>(which) ? -1 : m_known.owner; }
    [[nodiscard]] Knowledge nothingHappened() const;

    std::array<std::unique_ptr<BatchProgram>, 2> m_programs;
    Knowledge m_known{nothingHappened()};
    bool m_isTogether = false; // two commands are being judged that were sent at the same time
};

} // namespace soak
