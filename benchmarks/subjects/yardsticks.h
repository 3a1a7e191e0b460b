// SPDX-License-Identifier: MIT
#pragma once

#include "benchmarks/results/pairs.h"

namespace zelbench {

class Device;

// The yardsticks of painting, to be measured in turns with what they are compared with. Both paint the part of the
// drawing that the device's window shows now. The device must outlive them.

// A bare QPainter.
[[nodiscard]] Side bareSide(Device& device);

// Every item paints itself, as Qt renders a scene without a view. Makes all items of the window, so close it
// afterwards.
[[nodiscard]] Side itemsSide(Device& device);

} // namespace zelbench
