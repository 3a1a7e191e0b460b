// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>

#include <array>
#include <vector>

// One thing that a person does to the window, or that happens to it. The numbers are any; what they mean, such as which
// row or which place, depends on what the window shows, so that every part of a list of gestures can be carried out.
struct Gesture
{
    enum Kind {
        Begin, // a new copy of the project in a new window
        Press,
        Move,
        Release,
        DoubleClick,
        Wheel,
        Key,
        Mode,
        SelectRow,
        ExpandRow,
        PressRow,
        MoveOnRow,
        ReleaseRow,
        RowMenu,
        FilterMenu,
        DragMove, // enters the view where nothing is being dragged
        DragLeave,
        Drop,
        Elapse, // of the time that the pointer rests on a site
        Command,
        Trigger, // an action of the window
        Find,
        MoveDock,
        Resize,
        Hide,
        Reopen, // the project in the same window
        Renew, // deletes the window and makes another one
        Close,
        KindCount
    };

    Kind kind = Begin;
    std::array<unsigned, 3> numbers{};
};

using Gestures = std::vector<Gesture>;

// The same for the same seed. Every `round` gestures one begins anew.
[[nodiscard]] Gestures randomGestures(unsigned seed, int count, int round);

// One a line: its name and its numbers.
[[nodiscard]] QByteArray toText(const Gestures& gestures);

// Lines that are no gesture are left out.
[[nodiscard]] Gestures gesturesFrom(const QByteArray& text);
