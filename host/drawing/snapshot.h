// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

namespace mirn::zelchip {

// Renders the window as it looks now into an image file, in the format of the file's suffix (PNG without one). The
// image has as many pixels as the window has on its screen. Returns false on failure, with a sentence in *error.
bool saveSnapshot(QWidget& window, const QString& file, QString* error);

// Asks for the name of an image file below the folder. A name without a suffix gets ".png" before the dialog asks
// whether an existing file is to be replaced; any other suffix stays. Returns an empty text if the user cancels.
[[nodiscard]] QString chooseSnapshotFile(QWidget* parent, const QString& folder);

} // namespace mirn::zelchip
