// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/xml/tagreader.h"

#include <memory>

namespace mirn::zelsvg {

class XmlHandler;
struct Limits;

// The two ways to read XML: quickly, without rarely used features, or completely.
enum class XmlReading { Quick, Thorough };

// The handler and the diagnostics are not owned.
[[nodiscard]] std::unique_ptr<TagReader> makeTagReader(
    XmlReading reading, XmlHandler& handler, Diagnostics& diagnostics, const Limits& limits);

} // namespace mirn::zelsvg
