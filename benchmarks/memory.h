// SPDX-License-Identifier: MIT
#pragma once

namespace zelbench {

// The bytes of this process that are in memory, after what was freed has been given back to the system.
[[nodiscard]] double residentBytes();

} // namespace zelbench
