// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/document/documenttree.h"
#include "platform/svg/style/cascade.h"
#include "platform/svg/style/declarations.h"

#include <deque>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace mirn::zelsvg {

// The rules of a drawing's style sheets. It supports type, class, id and universal selectors, compounds of them, and
// the descendant and child combinators. Rules with other selectors and at-rules are ignored with a warning.
class StyleSheet
{
public:
    StyleSheet(Diagnostics& diagnostics, const Limits& limits);

    // Appends the rules of one sheet.
    void add(std::string text);

    [[nodiscard]] bool isEmpty() const { return m_selectors.empty(); }

    // Adds to `cascade` the declarations of the rules that match a node.
    void apply(const DocumentTree& tree, unsigned node, Cascade& cascade);

private:
    // A selector without combinators, such as "rect.site#a".
    struct Compound
    {
        ElementName type = ElementName::Unknown; // Unknown for any type
        std::vector<std::string_view> classes;
        std::string_view id;
        bool isChild = false; // whether the compound to the left must match the parent, not just any ancestor
    };

    struct Selector
    {
        std::vector<Compound> compounds; // from left to right; the last one is for the element itself
        std::size_t firstDeclaration;
        std::size_t endDeclaration;
        std::size_t cost; // steps needed to apply its declarations
        std::uint32_t specificity;
        std::uint32_t order;
    };

    void addRule(std::string_view selectors, std::string_view declarations);
    bool countsAreAllowed();
    bool parseSelector(std::string_view text, Selector& selector);
    static bool parseCompound(std::string_view text, Compound& compound, std::uint32_t& specificity);
    void addToIndex(std::size_t selector);

    using Bucket = std::vector<std::size_t>;
    void applyBucket(const Bucket& bucket, const DocumentTree& tree, unsigned node, Cascade& cascade);
    bool matches(const Selector& selector, const DocumentTree& tree, unsigned node);
    bool matchesAbove(const Selector& selector, std::size_t compound, const DocumentTree& tree, unsigned node);
    bool matchesCompound(const Compound& compound, const DocumentTree& tree, unsigned node);

    Diagnostics& m_diagnostics;
    const Limits& m_limits;
    std::deque<std::string> m_texts;
    std::vector<Declaration> m_declarations;
    std::vector<Selector> m_selectors;
    std::unordered_map<std::string_view, Bucket> m_byId;
    std::unordered_map<std::string_view, Bucket> m_byClass;
    // selectors without a type are under Unknown
    Bucket m_byType[static_cast<std::size_t>(ElementName::CharacterData) + 1];
    std::size_t m_tests = 0;
};

// Calls function(name) for each name in a class attribute.
template <typename Function> void forEachClass(std::string_view classes, Function function)
{
    constexpr std::string_view Spaces = " \t\n\r\f";
    std::size_t begin = classes.find_first_not_of(Spaces);
    while (begin != std::string_view::npos) {
        const std::size_t end = classes.find_first_of(Spaces, begin);
        function(classes.substr(begin, end - begin));
        begin = end == std::string_view::npos ? end : classes.find_first_not_of(Spaces, end);
    }
}

} // namespace mirn::zelsvg
