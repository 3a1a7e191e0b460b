// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelchipview {

// The look that the engine sets for an element at run time. ZEL_DYNAMIC_EMPTY_STRING stands for a value that it does
// not set.
struct GraphicItemDynamicAttribute
{
    QString popup; // tooltip
    QString fill; // "#RRGGBB"
};

} // namespace mirn::zelchipview
