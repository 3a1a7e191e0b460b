// SPDX-License-Identifier: MIT
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace zelsvg {

// A mistake in XML, in the words of whoever wrote it.
struct XmlMistake
{
    std::size_t offset; // where it begins
    std::string message; // what was found, what was expected
};

// The mistake at which reading `text` stopped: a tag, a reference, a comment or characters from its begin on, with some
// of what follows, in UTF-8. Nothing where bytes that are no text stand at `stop`, and where it is none of those that
// people make.
[[nodiscard]] std::optional<XmlMistake> findXmlMistake(std::string_view text, std::size_t stop);

// Where the attributes of a well-formed start tag begin, in UTF-8 as well. Empty for anything else.
[[nodiscard]] std::vector<std::size_t> attributeOffsets(std::string_view tag);

} // namespace zelsvg
