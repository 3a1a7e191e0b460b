// SPDX-License-Identifier: MIT
#pragma once

#include "tests/soak/room.h"
#include "tests/soak/round.h"

#include <functional>

namespace soak {

// A project that is changed, killed, damaged as a power cut damages it, and opened again; or one whose room comes and
// goes between the commands. With two dashes there are:
//   kill MOMENT        the program ends, at some moment of the commands since it opened: 1000 is after the last answer
//   opening MOMENT     so does the next one, while it opens the project
//   torn, refused      half a line at the journal's end, or a line that no program wrote
//   cut N, large N     the end of the journal is lost, or it has so many more lines
//   room BYTES         are left from now on; below 0: enough
class KillRound final : public Round
{
public:
    explicit KillRound(Room room = {}, const QString& where = QDir::tempPath());

    [[nodiscard]] QByteArrayList randomSteps(zeltest::Random& random) override;
    [[nodiscard]] QByteArray run(const QByteArrayList& steps) override;
    [[nodiscard]] QByteArray runAgain(const QByteArrayList& steps) override;
    [[nodiscard]] QByteArrayList made(const QByteArrayList&) const override { return m_made; }

private:
    [[nodiscard]] QByteArrayList stepsWithLittleRoom(zeltest::Random& random) const;
    [[nodiscard]] QByteArray make(const QByteArray& step);
    [[nodiscard]] QByteArray open();
    [[nodiscard]] QByteArray leaveRoom(int bytes);
    [[nodiscard]] QByteArray kill(int moment);
    [[nodiscard]] QByteArray killOpening(int moment);
    [[nodiscard]] QByteArray readAnswers();
    [[nodiscard]] QByteArray follow(const QByteArray& answer);
    [[nodiscard]] QByteArray damage(const QByteArray& how, int number);
    [[nodiscard]] QByteArray manyLines(int count);
    // Drops the models that a fact contradicts; returns what it contradicts when none is left.
    [[nodiscard]] QByteArray keepThose(const std::function<QByteArray(DesignModel&)>& contradiction);

    const Room m_room; // empty: there is enough
    int m_left = -1; // bytes
    std::unique_ptr<BatchProgram> m_program; // null: the last one was killed
    QByteArrayList m_sent; // commands without an answer
    QByteArrayList m_made;
    std::vector<DesignModel> m_models; // what may be; more than one after a command without an answer
    bool m_isDamaged = false; // since it was opened
    bool m_wasCut = false;
    bool m_isAgain = false;
};

} // namespace soak
