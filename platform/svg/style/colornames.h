// SPDX-License-Identifier: MIT
#pragma once

#include <optional>
#include <string_view>

namespace zelsvg {

// The colour keywords of CSS, as 0xRRGGBB; nothing for any other name.
[[nodiscard]] std::optional<unsigned int> namedColor(std::string_view lowerCaseName);

} // namespace zelsvg
