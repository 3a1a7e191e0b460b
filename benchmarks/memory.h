// SPDX-License-Identifier: MIT
#pragma once

namespace zelbench {

// Returns the resident bytes of this process, after freed memory has been returned to the system.
[[nodiscard]] double residentBytes();

} // namespace zelbench
