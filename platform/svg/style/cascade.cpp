// SPDX-License-Identifier: MIT
#include "platform/svg/style/cascade.h"

#include "platform/svg/style/declarations.h"

#include <algorithm>

namespace mirn::zelsvg {

void Cascade::addAttributes(const Element& element)
{
    for (std::uint64_t rest = element.properties(); rest; rest &= rest - 1) {
        const auto name = static_cast<AttributeName>(__builtin_ctzll(rest));
        set(name, element.value(name), Weight::Attribute);
    }
}

void Cascade::addStyle(std::string_view text)
{
    if (text.find("/*") != std::string_view::npos) {
        m_withoutComments = withoutComments(std::string(text));
        text = m_withoutComments;
    }
    Declaration declaration;
    while (takeDeclaration(text, declaration)) {
        if (declaration.property != AttributeName::Unknown)
            set(declaration.property, declaration.value,
                Weight::StyleAttribute | (declaration.isImportant ? Weight::Important : 0));
    }
}

std::vector<Cascade::Declared> Cascade::overridden(AttributeName property) const
{
    std::vector<Declared> found;
    for (auto entry = m_overridden.rbegin(); entry != m_overridden.rend(); ++entry) {
        if (entry->first == property)
            found.push_back(entry->second);
    }
    // Of two that weigh the same the later one wins.
    std::stable_sort(
        found.begin(), found.end(), [](const Declared& a, const Declared& b) { return a.weight > b.weight; });
    return found;
}

} // namespace mirn::zelsvg
