// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/paintcounter.h"
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

// The window as a host shows it, on a viewport of a fixed size without scroll bars. There can be one at a time. It
// comes up empty; load() brings the drawing.
class ChipWindow final
{
public:
    static constexpr int Width = 1600; // of the viewport, in pixels
    static constexpr int Height = 1000;

    // `folder` is the project's implementation folder, where the parser keeps its working file and the filter file is.
    ChipWindow(const std::string& drawingFile, const std::string& folder);
    ~ChipWindow();
    ChipWindow(const ChipWindow&) = delete;
    ChipWindow& operator=(const ChipWindow&) = delete;

    // False when nothing was loaded.
    bool load();

    // Centres the drawing, `zoom` times as large as when it just fits. Paints nothing yet.
    void show(double zoom);

    // Changes the scale by so little that the picture stays the same, and so much that it must be drawn anew.
    void changeScaleALittle();

    // Paints the whole viewport before it returns.
    void repaint();

    // Does at once what is waiting to be done, painting included.
    void deliver();

    // Runs the event loop until nothing is painted any more and gives the paint events that took; LongestUnrest of them
    // mean that it never ends.
    int settle();
    static constexpr int LongestUnrest = 50;

    // Through the viewport, as the user's.
    void mouse(QEvent::Type type, QPoint position);
    void click(QPoint position);

    [[nodiscard]] PaintCounter& painted() { return m_painted; }
    [[nodiscard]] QImage picture() const;

    // The same part of the drawing as picture(), as the items paint it one by one in a view of Qt's.
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
