// SPDX-License-Identifier: MIT
#pragma once

#include <QIcon>

class QPalette;

namespace mirn::zelchip {

// Returns an icon that was drawn for a light window as it has to be with this palette: in a dark one, what is dark in
// it becomes light, in the same hue.
[[nodiscard]] QIcon fittingIcon(const QIcon& icon, const QPalette& palette);

} // namespace mirn::zelchip
