// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

class QPalette;

namespace mirn::zelchip {

// The console's colours, derived from a palette so that they are legible on its light or dark background.
struct ConsoleColors
{
    explicit ConsoleColors(const QPalette& palette);

    QColor text;
    QColor muted;
    QColor accent;
    QColor error;
};

// Returns a contrast ratio from 1 for equal colours to 21 for black and white; small text needs 4.5.
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

} // namespace mirn::zelchip
