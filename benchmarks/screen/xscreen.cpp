// SPDX-License-Identifier: MIT
#include "benchmarks/screen/xscreen.h"

#include <X11/Xlib.h>
#include <X11/extensions/XTest.h>
#include <X11/extensions/Xdamage.h>
#include <poll.h>

#include <chrono>

namespace zelscreen {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds Quiet(100); // without a change the picture is at rest
constexpr std::chrono::milliseconds Patience(800); // that an answer may take, or there is none
constexpr std::chrono::seconds Longest(20); // until something that never rests is given up

constexpr unsigned LeftButton = 1;
constexpr unsigned WheelUp = 4;
constexpr unsigned WheelDown = 5;

double secondsBetween(Clock::time_point from, Clock::time_point to)
{
    return std::chrono::duration<double>(to - from).count();
}

bool touches(const XRectangle& drawn, const Area& area)
{
    return drawn.x < area.right && drawn.x + drawn.width > area.left && drawn.y < area.bottom
        && drawn.y + drawn.height > area.top;
}

} // namespace

struct XScreen::Server
{
    explicit Server(const std::string& name)
        : display(XOpenDisplay(name.c_str()))
    {
        int firstError = 0;
        int major = 0;
        int minor = 0;
        int unused = 0;
        if (!display || !XDamageQueryExtension(display, &firstEvent, &firstError)
            || !XTestQueryExtension(display, &unused, &unused, &major, &minor))
            return;
        damage = XDamageCreate(display, DefaultRootWindow(display), XDamageReportRawRectangles);
        isComplete = true;
    }

    ~Server()
    {
        if (isComplete)
            XDamageDestroy(display, damage);
        if (display)
            XCloseDisplay(display);
    }

    // Returns whether something was drawn in the area before `until`.
    bool waitForDamage(const Area& area, Clock::time_point until)
    {
        for (;;) {
            while (XPending(display) > 0) {
                XEvent event;
                XNextEvent(display, &event);
                if (event.type == firstEvent + XDamageNotify
                    && touches(reinterpret_cast<XDamageNotifyEvent*>(&event)->area, area))
                    return true;
            }
            const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(until - Clock::now());
            pollfd connection{ConnectionNumber(display), POLLIN, 0};
            if (left.count() <= 0 || poll(&connection, 1, static_cast<int>(left.count())) <= 0)
                return false;
        }
    }

    void sendKey(const char* name, bool isDown)
    {
        XTestFakeKeyEvent(display, XKeysymToKeycode(display, XStringToKeysym(name)), isDown, CurrentTime);
        XFlush(display);
    }

    void sendButton(unsigned button, bool isDown)
    {
        XTestFakeButtonEvent(display, button, isDown, CurrentTime);
        XFlush(display);
    }

    [[nodiscard]] Area everything() const { return {0, 0, DisplayWidth(display, 0), DisplayHeight(display, 0)}; }

    Display* const display;
    Damage damage = 0;
    int firstEvent = 0; // of the damage extension
    bool isComplete = false;
};

XScreen::XScreen(const std::string& display)
    : m_server(std::make_unique<Server>(display))
{ }

XScreen::~XScreen() = default;

bool XScreen::isOpen() const
{
    return m_server->isComplete;
}

void XScreen::moveTo(Point point)
{
    XTestFakeMotionEvent(m_server->display, 0, point.x, point.y, CurrentTime);
    XFlush(m_server->display);
}

void XScreen::press()
{
    m_server->sendButton(LeftButton, true);
}

void XScreen::release()
{
    m_server->sendButton(LeftButton, false);
}

void XScreen::turnWheel(int steps)
{
    const unsigned button = steps > 0 ? WheelUp : WheelDown;
    m_server->sendButton(button, true);
    m_server->sendButton(button, false);
}

void XScreen::pressKey(const char* name)
{
    m_server->sendKey(name, true);
}

void XScreen::releaseKey(const char* name)
{
    m_server->sendKey(name, false);
}

void XScreen::typeKey(const char* name)
{
    pressKey(name);
    releaseKey(name);
}

void XScreen::settle()
{
    const Clock::time_point start = Clock::now();
    while (m_server->waitForDamage(m_server->everything(), Clock::now() + Quiet) && Clock::now() - start < Longest) { }
}

Answer XScreen::answerTo(const std::function<void()>& event, const Area& area)
{
    Answer answer;
    const Clock::time_point start = Clock::now();
    event();
    while (m_server->waitForDamage(area, answer.hasCome ? Clock::now() + Quiet : start + Patience)) {
        answer.last = secondsBetween(start, Clock::now());
        if (!answer.hasCome)
            answer.first = answer.last;
        answer.hasCome = true;
        if (Clock::now() - start > Longest)
            break;
    }
    return answer;
}

} // namespace zelscreen
