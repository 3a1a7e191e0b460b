// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelparameter.h"

namespace zelsvg {

// Which limits of the zoom a drawing gives itself.
struct GivenLimits
{
    bool minimum = false;
    bool maximum = false;
};

// Sets those that it does not give, by its size, initial scale and step: wide enough for the whole drawing in a small
// window and for 64-fold detail of it in a large one, and for what the defaults of zel_Parameter allow.
void completeZoomLimits(zel_Parameter& parameter, GivenLimits given);

} // namespace zelsvg
