// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/names.h"

#include <cstdint>
#include <string_view>

namespace mirn::zelsvg {

// Properties of a text that are not drawn, one bit each.
namespace TextTrait {
constexpr std::uint8_t Bold = 1;
constexpr std::uint8_t Italic = 2;
constexpr std::uint8_t Lines = 4; // under, over or through the text
constexpr std::uint8_t LetterSpacing = 8;
constexpr std::uint8_t WordSpacing = 16;
constexpr std::uint8_t Vertical = 32;
constexpr std::uint8_t Effects = 64; // anything else
} // namespace TextTrait

// Whether a property of text has another value than usual.
[[nodiscard]] bool hasTrait(AttributeName property, std::string_view value);

// Effects and lines are never cleared: several properties determine effects, and an inner element cannot remove a line.
void setTrait(std::uint8_t trait, bool isSet, std::uint8_t& traits);

// Applies the words before the size of the font shorthand; without such words letters are neither bold nor italic.
void applyFontTraits(std::string_view words, std::uint8_t& traits);

} // namespace mirn::zelsvg
