// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/results/paintcounter.h"
#include "tests/support/fakeengine.h"

#include <QEvent>
#include <QImage>
#include <QPoint>

#include <memory>
#include <string>

namespace mirn::zelchipview {
class ZelChipGUI;
class ZelGraphicsScene;
class ZelGraphicsView;
} // namespace mirn::zelchipview

namespace zelbench {

// The chip view's window as a host shows it, with a viewport of a fixed size and no scroll bars. It starts empty;
// load() brings the drawing. There can be only one at a time.
class ChipWindow final
{
public:
    static constexpr int Width = 1600; // of the viewport, in pixels
    static constexpr int Height = 1000;

    // `folder` is the project's implementation folder. It has the filter file, and the parser puts its working file
    // there.
    ChipWindow(const std::string& drawingFile, const std::string& folder);
    ~ChipWindow();
    ChipWindow(const ChipWindow&) = delete;
    ChipWindow& operator=(const ChipWindow&) = delete;

    // Returns false if nothing was loaded.
    bool load();

    // Centres the drawing at `zoom` times the scale at which it just fits. Does not paint yet.
    void show(double zoom);

    // Changes the scale by so little that the picture stays the same, but so much that it has to be painted anew.
    void changeScaleALittle();

    // Paints the whole viewport before it returns.
    void repaint();

    // Delivers posted events at once, including paint events.
    void deliver();

    // Runs the event loop until nothing is painted any more. Returns the number of paint events; LongestUnrest of them
    // mean that it never ends.
    int settle();
    static constexpr int LongestUnrest = 50;

    // These send mouse events to the viewport, as the user would.
    void mouse(QEvent::Type type, QPoint position);
    void click(QPoint position);

    [[nodiscard]] PaintCounter& painted() { return m_painted; }
    [[nodiscard]] QImage picture() const;

    // Returns the part of the drawing that picture() shows, painted item by item in a plain QGraphicsView. Makes all
    // items.
    [[nodiscard]] QImage pictureOfItems() const;

    [[nodiscard]] mirn::zelchipview::ZelGraphicsView* view() const;
    [[nodiscard]] mirn::zelchipview::ZelGraphicsScene* scene() const;
    [[nodiscard]] mirn::zelchipview::ZelChipGUI& window() const { return *m_window; }
    [[nodiscard]] zeltest::FakeEngine& engine() { return m_engine; }

private:
    zeltest::FakeEngine m_engine;
    PaintCounter m_painted;
    std::unique_ptr<mirn::zelchipview::ZelChipGUI> m_window;
    double m_scale = 1.0;
    bool m_isScaleChanged = false;
};

} // namespace zelbench
