// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

class QColor;
class QPainter;
class QRectF;

namespace mirn::zelchipview {

// Paints the mark of what is locked, a padlock that fills the height of the area, in one colour.
ZELCHIPGUI_EXPORT void paintPadlock(QPainter& painter, const QRectF& area, const QColor& color);

} // namespace mirn::zelchipview
