// SPDX-License-Identifier: MIT
#pragma once

namespace mirn::zelchip {

// Suppresses Qt's messages about missing parts of a desktop session, which a container or the offscreen platform does
// not have. The user can do nothing about them. All other messages go where they went before.
void silencePlatformMessages();

} // namespace mirn::zelchip
