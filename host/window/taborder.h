// SPDX-License-Identifier: MIT
#pragma once

#include <QList>

class QWidget;

namespace mirn::zelchip {

// Makes Tab go through the widgets in the order in which the eye finds them in the window: those one above the other
// from top to bottom, others from left to right. Widgets of another window, such as a floating dock, are left out. Call
// it again when the docks have moved.
void orderTabsByEye(QList<QWidget*> widgets, const QWidget* window);

} // namespace mirn::zelchip
