// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/screen/xscreen.h"

#include <QString>

#include <memory>
#include <vector>

namespace zelscreen {

// The program on a screen of its own, with a drawing whose elements are sites of a device here and there. Some
// resources of the design are on sites.
class ShownProgram final
{
public:
    explicit ShownProgram(int elements);
    ~ShownProgram();
    ShownProgram(const ShownProgram&) = delete;
    ShownProgram& operator=(const ShownProgram&) = delete;

    // Returns what went wrong; empty when the whole drawing is shown and at rest.
    [[nodiscard]] QString start();

    // Valid after start().
    [[nodiscard]] XScreen& screen() { return *m_screen; }
    [[nodiscard]] const Area& drawing() const { return m_drawing; } // on the screen, when all of it is shown
    [[nodiscard]] const std::vector<Point>& placedRows() const { return m_placedRows; } // of the tree
    [[nodiscard]] const std::vector<Point>& unplacedRows() const { return m_unplacedRows; }

    // Returns the processor seconds that the program has used.
    [[nodiscard]] double processorSeconds() const;

    struct End
    {
        double processorSeconds = 0.0; // from the request to the end
        double wallSeconds = 0.0;
        bool hasCome = false;
    };

    // Asks the program to end, by its key.
    [[nodiscard]] End quit();

private:
    struct Parts;
    [[nodiscard]] QString readPositions();

    const std::unique_ptr<Parts> m_parts;
    std::unique_ptr<XScreen> m_screen;
    Area m_drawing;
    std::vector<Point> m_placedRows;
    std::vector<Point> m_unplacedRows;
};

} // namespace zelscreen
