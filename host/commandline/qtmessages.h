// SPDX-License-Identifier: MIT
#pragma once

namespace mirn::zelchip {

// Keeps to itself what Qt says of the desktop session that a container or the offscreen platform lacks. The user can do
// nothing about it, and it would stand between the program's own messages. All else goes where it went before.
void silencePlatformMessages();

} // namespace mirn::zelchip
