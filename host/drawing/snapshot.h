// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

namespace mirn::zelchip {

// Renders the window as it looks now into an image file, in the format that the file's suffix names (PNG without one).
// The image has as many pixels as the window has on its screen. On an error gives false and a sentence in `error`.
bool saveSnapshot(QWidget& window, const QString& file, QString* error);

} // namespace mirn::zelchip
