// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

namespace mirn::zelsvg {

// Returns the colour of a CSS colour keyword as 0xRRGGBB; nothing for any other name.
[[nodiscard]] std::optional<unsigned int> namedColor(std::string_view lowerCaseName);

} // namespace mirn::zelsvg
