// SPDX-License-Identifier: MIT
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace zelscreen {

struct Point
{
    int x = 0;
    int y = 0;
};

struct Area
{
    int left = 0;
    int top = 0;
    int right = 0; // behind the last pixel
    int bottom = 0;
};

// When the screen has answered an event.
struct Answer
{
    double first = 0.0; // seconds from the event to the first pixels that were drawn
    double last = 0.0; // to the last ones before it came to rest
    bool hasCome = false; // false if nothing was drawn
};

// The pointer, the keyboard and the pixels of a screen, from outside of the program that is on it. The server counts
// its events as real ones, and reports everything that anybody draws.
class XScreen final
{
public:
    // `display` is a name such as ":7". See isOpen().
    explicit XScreen(const std::string& display);
    ~XScreen();
    XScreen(const XScreen&) = delete;
    XScreen& operator=(const XScreen&) = delete;

    // False if the screen cannot be reached, or lacks the extensions for events and for damage.
    [[nodiscard]] bool isOpen() const;

    void moveTo(Point point);
    void press();
    void release();

    // Turns the wheel by one step: up or away from the user if `steps` is above 0, else down.
    void turnWheel(int steps);

    // `name` is the key's in X, such as "Escape".
    void pressKey(const char* name);
    void releaseKey(const char* name);
    void typeKey(const char* name);

    // Sends what was done so far and waits until nothing is drawn any more.
    void settle();

    // Does something on a screen at rest, and watches the pixels in an area until they come to rest again.
    [[nodiscard]] Answer answerTo(const std::function<void()>& event, const Area& area);

private:
    struct Server;
    const std::unique_ptr<Server> m_server;
};

} // namespace zelscreen
