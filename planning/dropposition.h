// SPDX-License-Identifier: MIT
#pragma once

#include <QDropEvent>

namespace mirn::zelchipview {

// Returns where a drag is, in the coordinates of the widget that the event belongs to.
[[nodiscard]] inline QPoint dropPosition(const QDropEvent& event)
{
#if QT_VERSION >= QT_VERSION_CHECK(6, 0, 0)
    return event.position().toPoint();
#else
    return event.pos();
#endif
}

} // namespace mirn::zelchipview
