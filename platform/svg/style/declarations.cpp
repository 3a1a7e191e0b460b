// SPDX-License-Identifier: MIT
#include "platform/svg/style/declarations.h"

#include "platform/svg/base/number.h"

#include <algorithm>

namespace mirn::zelsvg {

namespace {

// A ';' in quotes or brackets, as in url(data:...;...), does not end a declaration.
[[nodiscard]] std::size_t declarationEnd(std::string_view text)
{
    char quote = '\0';
    int brackets = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quote)
            quote = c == quote ? '\0' : quote;
        else if (c == '"' || c == '\'')
            quote = c;
        else if (c == '(')
            ++brackets;
        else if (c == ')' && brackets > 0)
            --brackets;
        else if (c == ';' && brackets == 0)
            return i;
    }
    return text.size();
}

[[nodiscard]] bool takeImportant(std::string_view& value)
{
    constexpr std::string_view Word = "important";
    if (value.size() <= Word.size() || !equalsIgnoringCase(value.substr(value.size() - Word.size()), Word))
        return false;
    const std::string_view before = trimmed(value.substr(0, value.size() - Word.size()));
    if (before.empty() || before.back() != '!')
        return false;
    value = trimmed(before.substr(0, before.size() - 1));
    return true;
}

} // namespace

std::string withoutComments(std::string text)
{
    char quote = '\0';
    for (std::size_t i = text.find("/*") == std::string::npos ? text.size() : 0; i < text.size(); ++i) {
        const char c = text[i];
        if (quote) {
            quote = c == quote || c == '\n' ? '\0' : quote;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (text.compare(i, 2, "/*") == 0) {
            const std::size_t close = text.find("*/", i + 2);
            const std::size_t end = close == std::string::npos ? text.size() : close + 2;
            std::fill(
                text.begin() + static_cast<std::ptrdiff_t>(i), text.begin() + static_cast<std::ptrdiff_t>(end), ' ');
            i = end - 1;
        }
    }
    return text;
}

bool takeDeclaration(std::string_view& text, Declaration& declaration)
{
    if (text.empty())
        return false;
    const std::size_t end = declarationEnd(text);
    const std::string_view whole = text.substr(0, end);
    text.remove_prefix(end < text.size() ? end + 1 : end);
    declaration = {};
    const std::size_t colon = whole.find(':');
    if (colon == std::string_view::npos)
        return true;
    declaration.property = propertyName(trimmed(whole.substr(0, colon)));
    declaration.value = trimmed(whole.substr(colon + 1));
    declaration.isImportant = takeImportant(declaration.value);
    return true;
}

} // namespace mirn::zelsvg
