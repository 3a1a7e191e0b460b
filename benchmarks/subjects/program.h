// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace zelbench {

// What a program has used until it ended.
struct ProgramRun
{
    bool isOk = false; // it was started and has ended with status 0
    double processorSeconds = 0.0; // of all its threads, and of the system for it
    double wallSeconds = 0.0; // from its start to its end
    double mostBytes = 0.0; // resident at a time
};

// Runs a program and waits for its end. Its standard output is dropped. `home` is where it finds and leaves its
// settings.
[[nodiscard]] ProgramRun runProgram(const std::vector<std::string>& words, const std::string& home);

} // namespace zelbench
