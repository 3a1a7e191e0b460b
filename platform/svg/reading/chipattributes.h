// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelparameter.h"
#include "platform/svg/document/element.h"
#include "platform/svg/reading/zoomlimits.h"

#include <optional>

namespace mirn::zelsvg {

class Diagnostics;

// Functions that read the attributes of the chip drawing's own namespace. An invalid value is an error of the drawing
// and changes nothing.

// Reads the zoom parameters of the root element. Returns which limits it specifies.
GivenLimits readZoomParameters(const Element& root, Diagnostics& diagnostics, zel_Parameter& parameter);

// Reads a <tovanel:layer> element: the scale range of one layer.
void readLayerRange(const Element& element, Diagnostics& diagnostics, zel_Parameter& parameter);

// Return nothing if the element does not have the attribute itself.
[[nodiscard]] std::optional<int> readLayer(const Element& element, Diagnostics& diagnostics);
[[nodiscard]] std::optional<int> readId(const Element& element, Diagnostics& diagnostics);
[[nodiscard]] bool readFlag(const Element& element, Diagnostics& diagnostics);

} // namespace mirn::zelsvg
