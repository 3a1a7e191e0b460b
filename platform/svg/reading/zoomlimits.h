// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelparameter.h"

namespace mirn::zelsvg {

// The zoom limits that a drawing specifies itself.
struct GivenLimits
{
    bool minimum = false;
    bool maximum = false;
};

// Sets the limits that the drawing does not specify, from its size, initial scale and step. They cover the whole
// drawing in a small window, 64-fold detail of it in a large one, and the defaults of zel_Parameter.
void completeZoomLimits(zel_Parameter& parameter, GivenLimits given);

} // namespace mirn::zelsvg
