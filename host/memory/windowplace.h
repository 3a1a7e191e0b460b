// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QRect>
#include <QSize>

namespace mirn::zelchip {

// Where a window is on the screens, in device-independent pixels without its frame.
struct WindowPlace
{
    QRect rect; // null for the window manager's choice of a place
    QSize size;
    bool isMaximized = false;
};

// Returns the place of a window of which none is remembered. `available` is what the desktop leaves of its screen. A
// window that is too large for that in both directions is maximized.
[[nodiscard]] WindowPlace firstPlace(QSize wanted, const QRect& available);

// Returns where a remembered window is put: as far as possible where it was, all on one screen. The result's rect is
// null if it would be off every screen.
[[nodiscard]] WindowPlace restoredPlace(const QRect& remembered, const QList<QRect>& available);

} // namespace mirn::zelchip
