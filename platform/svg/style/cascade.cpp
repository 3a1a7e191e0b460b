// SPDX-License-Identifier: MIT
#include "platform/svg/style/cascade.h"

#include "platform/svg/style/declarations.h"

namespace zelsvg {

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

} // namespace zelsvg
