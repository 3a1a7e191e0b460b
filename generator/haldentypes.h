// SPDX-License-Identifier: MIT
#pragma once

namespace mirn::zeldevicegenerator {

// The members "types" and "rules" of the device file: what is placed on the invented device, and by which rules.
[[nodiscard]] const char* haldenTypes();

} // namespace mirn::zeldevicegenerator
