// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

class QWidget;

namespace mirn::zelchip {

// Asks for the name of an image file below the folder. A name without a suffix gets ".png" before the dialog asks
// whether an existing file is to be replaced; any other suffix stays. Returns an empty text if the user cancels.
[[nodiscard]] QString chooseSnapshotFile(QWidget* parent, const QString& folder);

} // namespace mirn::zelchip
