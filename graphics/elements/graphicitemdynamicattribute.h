// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelchipview {

// What the engine gives an element at run time; ZEL_DYNAMIC_EMPTY_STRING where it gives nothing.
struct GraphicItemDynamicAttribute
{
    QString popup; // tooltip
    QString fill; // "#RRGGBB"
};

} // namespace mirn::zelchipview
