// SPDX-License-Identifier: MIT
#pragma once

#include <QTemporaryDir>

#include <memory>
#include <string>

class SVGParser;

namespace zelbench {

class BarePainter;
class ChipWindow;

// A generated drawing of one size with what the benchmarks make of it. Everything is made when it is first asked for
// and kept until another size is asked for.
class Device final
{
public:
    // The one of this size; ends one of another size.
    static Device& ofSize(int elements);

    // Ends the current one, if any; before the application ends.
    static void close();

    ~Device();
    Device(const Device&) = delete;
    Device& operator=(const Device&) = delete;

    [[nodiscard]] int elements() const { return m_elements; }
    [[nodiscard]] std::string drawingFile() const;
    [[nodiscard]] std::string folder() const;
    [[nodiscard]] std::string workingFile() const; // where the window's parser keeps it
    void removeWorkingFile() const;

    // The nth of element ids that lie all over the drawing, from 0.
    [[nodiscard]] int scatteredId(int n) const;

    // The records of the drawing.
    [[nodiscard]] const SVGParser& parsed();

    // The window with the drawing loaded. To be closed before another one is made.
    [[nodiscard]] ChipWindow& window();
    void closeWindow();

    // The same drawing without a scene.
    [[nodiscard]] const BarePainter& bare();

private:
    explicit Device(int elements);

    const int m_elements;
    QTemporaryDir m_folder;
    std::unique_ptr<SVGParser> m_parsed;
    std::unique_ptr<ChipWindow> m_window;
    std::unique_ptr<BarePainter> m_bare;
};

} // namespace zelbench
