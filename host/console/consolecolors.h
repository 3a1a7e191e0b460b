// SPDX-License-Identifier: MIT
#pragma once

#include <QColor>

class QPalette;

namespace mirn::zelchip {

// The console's colours, made from a palette so that they can be read on its base, light or dark.
struct ConsoleColors
{
    explicit ConsoleColors(const QPalette& palette);

    QColor text;
    QColor muted;
    QColor accent;
    QColor error;
};

// From 1 for equal ones to 21 for black and white; 4.5 is what small text needs.
[[nodiscard]] double contrast(const QColor& one, const QColor& other);

} // namespace mirn::zelchip
