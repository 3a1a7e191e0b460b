// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

namespace mirn::zelchip {

// Renders the window as it looks now into an image file, in the format of the file's suffix (PNG without one). The
// image has as many pixels as the window has on its screen. Returns false on failure, with a sentence in *error.
bool saveSnapshot(QWidget& window, const QString& file, QString* error);

} // namespace mirn::zelchip
