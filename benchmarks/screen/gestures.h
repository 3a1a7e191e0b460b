// SPDX-License-Identifier: MIT
#pragma once

#include <map>
#include <string>
#include <vector>

namespace zelscreen {

class ShownProgram;

// What one gesture has cost.
struct Measured
{
    double first = 0.0; // seconds; see Answer
    double last = 0.0;
    double processor = 0.0; // of the program
};

// By kind of gesture.
using Measurements = std::map<std::string, std::vector<Measured>>;

// Makes gestures of all kinds at the scale of the whole drawing, at four and at thirty times of it. The rounds differ
// in where the pointer is. Gestures to which nothing changes on the screen are not counted. Afterwards the program
// shows what it showed before.
void makeGestures(ShownProgram& program, int round, Measurements& measurements);

} // namespace zelscreen
