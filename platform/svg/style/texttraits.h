// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/names.h"

#include <cstdint>
#include <string_view>

namespace zelsvg {

// What a text would have that is drawn plain; one bit each.
namespace TextTrait {
constexpr std::uint8_t Bold = 1;
constexpr std::uint8_t Italic = 2;
constexpr std::uint8_t Lines = 4; // under, over or through it
constexpr std::uint8_t LetterSpacing = 8;
constexpr std::uint8_t WordSpacing = 16;
constexpr std::uint8_t Vertical = 32;
constexpr std::uint8_t Effects = 64; // anything else
} // namespace TextTrait

// Whether a property of text has another value than usual.
[[nodiscard]] bool hasTrait(AttributeName property, std::string_view value);

// Effects, which several properties decide on, and lines, which no inner element takes away, are never cleared.
void setTrait(std::uint8_t trait, bool isSet, std::uint8_t& traits);

// Of the words before the size in the shorthand for fonts; without them letters are neither bold nor italic.
void applyFontTraits(std::string_view words, std::uint8_t& traits);

} // namespace zelsvg
