// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace mirn::zelsvg {

// A mistake in XML, explained to the author of the drawing.
struct XmlMistake
{
    std::size_t offset; // offset of its first byte
    std::string message; // what was found and what was expected
};

// Explains the mistake at which reading `text` stopped, at offset `stop`. `text` is UTF-8 and begins with the tag,
// reference, comment or characters in question, followed by some of what comes next. Returns nothing if `stop` is not
// within the text or the bytes there are not a character.
[[nodiscard]] std::optional<XmlMistake> findXmlMistake(std::string_view text, std::size_t stop);

// Returns where the attributes of a well-formed start tag (UTF-8) begin; empty for anything else.
[[nodiscard]] std::vector<std::size_t> attributeOffsets(std::string_view tag);

} // namespace mirn::zelsvg
