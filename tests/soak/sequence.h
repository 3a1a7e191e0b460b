// SPDX-License-Identifier: MIT
#pragma once

#include "tests/soak/gesture.h"

#include <QString>

// What came of a list of gestures that a program of its own carried out.
struct Outcome
{
    QString fault; // empty: none
    QByteArray output; // what the program said
    std::size_t done = 0; // gestures, the one with the fault among them
};

// Runs this program on the gestures, for so many milliseconds at most.
[[nodiscard]] Outcome runApart(const Gestures& gestures, int milliseconds);

// The shortest list that still ends in the same fault, as far as it is found in the time: tries to do without ever
// smaller parts of it.
[[nodiscard]] Gestures shortened(Gestures gestures, const QString& fault, int milliseconds);
