// SPDX-License-Identifier: MIT
#pragma once

// Everything is compiled with hidden visibility; these two macros mark what a library exports. There is one macro per
// library, because a class that is exported by the one must not be exported again by the other.
#define ZELPLATFORM_EXPORT __attribute__((visibility("default")))
#define ZELCHIPGUI_EXPORT __attribute__((visibility("default")))
