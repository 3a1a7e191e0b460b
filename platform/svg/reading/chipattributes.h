// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelparameter.h"
#include "platform/svg/document/element.h"
#include "platform/svg/reading/zoomlimits.h"

#include <optional>

namespace zelsvg {

class Diagnostics;

// The attributes of the chip drawing's own namespace. Each is checked; a value that is not what it should be is an
// error of the drawing, with nothing changed.

// The zoom parameters on the root element. Returns which limits it gives.
GivenLimits readZoomParameters(const Element& root, Diagnostics& diagnostics, zel_Parameter& parameter);

// A <tovanel:layer> element: one layer's scale range.
void readLayerRange(const Element& element, Diagnostics& diagnostics, zel_Parameter& parameter);

// Nothing where the element has none of its own.
[[nodiscard]] std::optional<int> readLayer(const Element& element, Diagnostics& diagnostics);
[[nodiscard]] std::optional<int> readId(const Element& element, Diagnostics& diagnostics);
[[nodiscard]] bool readFlag(const Element& element, Diagnostics& diagnostics);

} // namespace zelsvg
