// SPDX-License-Identifier: MIT
#pragma once

#include <QTemporaryDir>

#include <memory>
#include <string>

class SVGParser;

namespace zelbench {

class BarePainter;
class ChipWindow;

// A generated drawing of one size, and everything that the benchmarks derive from it. Each part is made when it is
// first asked for, and kept until another size is asked for.
class Device final
{
public:
    // Returns the drawing of this size; deletes one of another size.
    static Device& ofSize(int elements);

    // Deletes the current drawing, if any. Call this before the application is destroyed.
    static void close();

    ~Device();
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    [[nodiscard]] int elements() const { return m_elements; }
    [[nodiscard]] std::string drawingFile() const;
    [[nodiscard]] std::string folder() const;
    [[nodiscard]] std::string workingFile() const; // the working file of the window's parser
    void removeWorkingFile() const;

    // Returns the nth (from 0) of a sequence of element ids that are scattered over the drawing.
    [[nodiscard]] int scatteredId(int n) const;

    // Returns a parser with the records of the drawing.
    [[nodiscard]] const SVGParser& parsed();

    // Returns the window with the drawing loaded and an empty tree. Close it before another one is made.
    [[nodiscard]] ChipWindow& window();
    void closeWindow();

    // Returns the same for benchmarks that leave rows in the tree, which it may have already.
    [[nodiscard]] ChipWindow& windowForRows();

    // Returns the same drawing without a scene.
    [[nodiscard]] const BarePainter& bare();

private:
    explicit Device(int elements);

    const int m_elements;
    QTemporaryDir m_folder;
    std::unique_ptr<SVGParser> m_parsed;
    std::unique_ptr<ChipWindow> m_window;
    bool m_hasRows = false;
    std::unique_ptr<BarePainter> m_bare;
};

} // namespace zelbench
