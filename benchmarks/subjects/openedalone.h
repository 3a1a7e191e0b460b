// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string>

namespace zelbench {

// The memory that a drawing takes in a process that has done nothing before: where another drawing was open, memory
// that it left would be used again and not be counted.
struct MemoryOfDrawing
{
    double atRest = 0.0; // bytes between the empty window and the first picture of the drawing
    double most = 0.0; // the same at the worst moment in between
};

// Starts this program anew to measure the drawing. Returns nothing if that fails.
[[nodiscard]] std::optional<MemoryOfDrawing> memoryOpenedAlone(
    const std::string& drawingFile, const std::string& folder);

// What the program does that was started so: returns the status to end with if the arguments are for it. It needs an
// application object.
[[nodiscard]] std::optional<int> answerOpenedAlone(int argc, char** argv);

} // namespace zelbench
