// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <string_view>

namespace mirn::zelimporter {

// All return why a text, in UTF-8, cannot have its place in a project; empty if it can.

// A name of a site, which commands put between braces.
[[nodiscard]] QString siteNameError(std::string_view name);
// A name of a resource, which is also a part of a path.
[[nodiscard]] QString resourceNameError(std::string_view name);
// A kind or a group.
[[nodiscard]] QString wordError(std::string_view text);
// A tooltip or an attribute, which may have several lines.
[[nodiscard]] QString noteError(std::string_view text);

} // namespace mirn::zelimporter
