// SPDX-License-Identifier: MIT
#include "benchmarks/screen/gestures.h"

#include "benchmarks/screen/shownprogram.h"

#include <algorithm>
#include <cstdint>
#include <functional>

namespace zelscreen {

namespace {

constexpr int StepsTo4x = 6; // of the wheel; each is a factor of 1.25
constexpr int StepsFrom4xTo30x = 9;
constexpr int DragSteps = 4;
constexpr int DragPixels = 91; // far enough for another element at each scale
constexpr int PanPixels = 60;
constexpr int Threshold = 12; // pixels after which a press becomes a drag

// One round of gestures.
class Hand
{
public:
    Hand(ShownProgram& program, int round, Measurements& measurements)
        : m_program(program)
        , m_screen(program.screen())
        , m_measurements(measurements)
        , m_state(static_cast<std::uint32_t>(round) * 2654435761U + 12345U)
    { }

    void goOver()
    {
        atFit();
        zoom(StepsTo4x);
        turnWheel("wheel at 4x", 4);
        pan("pan at 4x", 6);
        click("click at 4x", 3);
        band("band at 4x", 200, 2);
        drag("drag move at 4x");
        zoom(StepsFrom4xTo30x);
        turnWheel("wheel at 30x", 4);
        pan("pan at 30x", 6);
        click("click at 30x", 3);
        drag("drag move at 30x");
        zoom(-StepsTo4x - StepsFrom4xTo30x);
    }

private:
    void atFit()
    {
        turnWheel("wheel at fit", 6);
        click("click at fit", 5);
        band("band of 40 pixels at fit", 40, 2);
        band("band of half the drawing", height() / 2, 2);
        band("band of the whole drawing", height(), 2);
        clickRows("row of a placed resource", m_program.placedRows());
        clickRows("10,000 sites light up", m_program.unplacedRows());
        drag("drag move at fit");
    }

    // Up and down again, so that the scale is the same afterwards; `times` is even.
    void turnWheel(const char* kind, int times)
    {
        m_screen.pressKey("Control_L");
        for (int n = 0; n < times; ++n) {
            const int direction = n % 2 == 0 ? 1 : -1;
            if (direction > 0)
                moveTo(somewhere());
            measure(kind, [&] { m_screen.turnWheel(direction); });
        }
        m_screen.releaseKey("Control_L");
        m_screen.settle();
    }

    void zoom(int steps)
    {
        moveTo(middle());
        m_screen.pressKey("Control_L");
        for (int n = 0; n < std::abs(steps); ++n) {
            m_screen.turnWheel(steps);
            m_screen.settle();
        }
        m_screen.releaseKey("Control_L");
    }

    // To and fro with the hand that the key chooses.
    void pan(const char* kind, int times)
    {
        m_screen.typeKey("h");
        moveTo(middle());
        m_screen.press();
        for (int n = 0; n < times; ++n) {
            const int distance = n < times / 2 ? PanPixels : -PanPixels;
            measure(kind, [&] { moveBy(distance, distance / 3); });
        }
        m_screen.release();
        m_screen.typeKey("s");
        m_screen.settle();
    }

    void click(const char* kind, int times)
    {
        for (int n = 0; n < times; ++n) {
            moveTo(somewhere());
            measure(kind, [&] {
                m_screen.press();
                m_screen.release();
            });
        }
    }

    // Pulls a square open; what counts is the selection of all that it touches.
    void band(const char* kind, int side, int times)
    {
        for (int n = 0; n < times; ++n) {
            const int room = std::max(1, height() - side);
            const Point corner{area().left + below(room), area().top + below(room)};
            moveTo(corner);
            m_screen.press();
            for (const int reach : {side / 2, side - 1})
                measure("band follows the pointer", [&] { moveTo({corner.x + reach, corner.y + reach}); });
            measure(kind, [&] { m_screen.release(); });
        }
    }

    void clickRows(const char* kind, const std::vector<Point>& rows)
    {
        for (int n = 0; n < 4; ++n) {
            moveTo(rows[below(static_cast<int>(rows.size()))]);
            measure(kind, [&] {
                m_screen.press();
                m_screen.release();
            });
        }
    }

    // Drags a resource from its row over the drawing, and changes its mind.
    void drag(const char* kind)
    {
        moveTo(m_program.unplacedRows().front());
        m_screen.press();
        moveBy(Threshold, Threshold);
        m_screen.settle();
        moveTo({area().left + Threshold, area().top + below(height() / 2)});
        m_screen.settle();
        for (int n = 0; n < DragSteps; ++n)
            measure(kind, [&] { moveBy(DragPixels, DragPixels / 5); });
        m_screen.typeKey("Escape");
        m_screen.settle();
        m_screen.release();
        m_screen.settle();
    }

    // What counts is the drawing, and not what else tells of the pointer.
    void measure(const std::string& kind, const std::function<void()>& event)
    {
        m_screen.settle();
        const double before = m_program.processorSeconds();
        const Answer answer = m_screen.answerTo(event, area());
        if (answer.hasCome)
            m_measurements[kind].push_back({answer.first, answer.last, m_program.processorSeconds() - before});
    }

    void moveTo(Point point)
    {
        m_pointer = point;
        m_screen.moveTo(point);
    }

    void moveBy(int x, int y) { moveTo({m_pointer.x + x, m_pointer.y + y}); }

    // Numbers without a pattern, the same in each run.
    int below(int limit)
    {
        m_state = m_state * 1664525U + 1013904223U;
        return static_cast<int>((m_state >> 8) % static_cast<std::uint32_t>(limit));
    }

    [[nodiscard]] const Area& area() const { return m_program.drawing(); }
    [[nodiscard]] int height() const { return area().bottom - area().top; }
    [[nodiscard]] Point middle() const { return {(area().left + area().right) / 2, (area().top + area().bottom) / 2}; }
    Point somewhere() { return {area().left + below(height()), area().top + below(height())}; }

    ShownProgram& m_program;
    XScreen& m_screen;
    Measurements& m_measurements;
    Point m_pointer;
    std::uint32_t m_state;
};

} // namespace

void makeGestures(ShownProgram& program, int round, Measurements& measurements)
{
    Hand(program, round, measurements).goOver();
}

} // namespace zelscreen
