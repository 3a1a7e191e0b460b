// SPDX-License-Identifier: MIT
#include "platform/svg/style/stylesheet.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/number.h"

#include <algorithm>

namespace mirn::zelsvg {

namespace {

constexpr std::uint32_t IdSpecificity = 1U << 20;
constexpr std::uint32_t ClassSpecificity = 1U << 10;
constexpr std::uint32_t LargestSpecificity = (1U << 28) - 1;
constexpr std::size_t MostCompounds = 64;
constexpr std::size_t BytesPerStep = 16; // when a text is scanned again

// The markers around a sheet that is hidden in an XML comment are replaced by spaces, like CSS comments.
[[nodiscard]] std::string plainSheet(std::string text)
{
    text = withoutComments(std::move(text));
    for (std::string_view mark : {"<!--", "-->"}) {
        for (std::size_t at = text.find(mark); at != std::string::npos; at = text.find(mark, at))
            text.replace(at, mark.size(), mark.size(), ' ');
    }
    return text;
}

// Returns the end of the block that begins with the '{' at `open`.
[[nodiscard]] std::size_t blockEnd(std::string_view text, std::size_t open)
{
    int depth = 0;
    for (std::size_t i = open; i < text.size(); ++i) {
        if (text[i] == '{')
            ++depth;
        else if (text[i] == '}' && --depth == 0)
            return i;
    }
    return text.size();
}

[[nodiscard]] bool isNameCharacter(char c)
{
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || (c >= '0' && c <= '9') || c == '-' || c == '_'
        || static_cast<unsigned char>(c) >= 0x80;
}

[[nodiscard]] std::string_view takeName(std::string_view& text)
{
    std::size_t length = 0;
    while (length < text.size() && isNameCharacter(text[length]))
        ++length;
    const std::string_view name = text.substr(0, length);
    text.remove_prefix(length);
    return name;
}

} // namespace

StyleSheet::StyleSheet(Diagnostics& diagnostics, const Limits& limits)
    : m_diagnostics(diagnostics)
    , m_limits(limits)
{ }

void StyleSheet::add(std::string text)
{
    m_texts.push_back(plainSheet(std::move(text)));
    std::string_view rest = trimmed(m_texts.back());
    while (!rest.empty() && !m_diagnostics.hasFailed()) {
        // Each search ends within the rule; searching to the end of the sheet for every rule would take quadratic time.
        const bool isAtRule = rest.front() == '@';
        const std::size_t open = rest.find_first_of(isAtRule ? "{;" : "{");
        const bool hasBlock = open != std::string_view::npos && rest[open] == '{';
        const std::size_t end = hasBlock ? blockEnd(rest, open) : std::min(open, rest.size());
        if (isAtRule) {
            if (rest.substr(0, 10) != "@font-face" && rest.substr(0, 8) != "@charset")
                m_diagnostics.warn(Unsupported::Selector);
        } else if (hasBlock) {
            addRule(rest.substr(0, open), rest.substr(open + 1, end - open - 1));
        }
        rest = trimmed(rest.substr(std::min(end + 1, rest.size())));
    }
}

void StyleSheet::addRule(std::string_view selectors, std::string_view declarations)
{
    const std::size_t first = m_declarations.size();
    std::size_t cost = 0;
    Declaration declaration;
    while (countsAreAllowed() && takeDeclaration(declarations, declaration)) {
        if (declaration.property != AttributeName::Unknown) {
            m_declarations.push_back(declaration);
            cost += 1 + declaration.value.size() / BytesPerStep;
        }
    }
    for (std::size_t begin = 0; begin <= selectors.size() && countsAreAllowed();) {
        const std::size_t comma = std::min(selectors.find(',', begin), selectors.size());
        Selector selector;
        selector.firstDeclaration = first;
        selector.endDeclaration = m_declarations.size();
        selector.cost = cost;
        selector.order = static_cast<std::uint32_t>(m_selectors.size());
        if (!parseSelector(trimmed(selectors.substr(begin, comma - begin)), selector)) {
            m_diagnostics.warn(Unsupported::Selector);
        } else if (selector.firstDeclaration != selector.endDeclaration) {
            m_selectors.push_back(std::move(selector));
            addToIndex(m_selectors.size() - 1);
        }
        begin = comma + 1;
    }
}

bool StyleSheet::countsAreAllowed()
{
    if (m_selectors.size() + m_declarations.size() > m_limits.styleRules)
        m_diagnostics.fail("found more than " + std::to_string(m_limits.styleRules)
            + " selectors and declarations in style sheets, expected fewer");
    return !m_diagnostics.hasFailed();
}

bool StyleSheet::parseSelector(std::string_view text, Selector& selector)
{
    std::uint32_t specificity = 0;
    bool isChild = false;
    while (!text.empty()) {
        if (text.front() == '>') {
            if (selector.compounds.empty() || isChild)
                return false;
            isChild = true;
            text = trimmed(text.substr(1));
            continue;
        }
        const std::size_t end = std::min(text.find_first_of(" \t\n\r\f>"), text.size());
        Compound compound;
        compound.isChild = isChild;
        if (!parseCompound(text.substr(0, end), compound, specificity) || selector.compounds.size() == MostCompounds)
            return false;
        selector.compounds.push_back(std::move(compound));
        isChild = false;
        text = trimmed(text.substr(end));
    }
    selector.specificity = std::min(specificity, LargestSpecificity);
    return !selector.compounds.empty() && !isChild;
}

bool StyleSheet::parseCompound(std::string_view text, Compound& compound, std::uint32_t& specificity)
{
    if (text.front() == '*') {
        text.remove_prefix(1);
    } else if (isNameCharacter(text.front())) {
        compound.type = elementName(XmlNamespace::Svg, takeName(text));
        if (compound.type == ElementName::Unknown)
            compound.type = ElementName::CharacterData; // a type that is never drawn, so this matches no element
        ++specificity;
    }
    while (!text.empty()) {
        const char kind = text.front();
        text.remove_prefix(1);
        const std::string_view name = takeName(text);
        if (name.empty() || (kind != '.' && kind != '#'))
            return false;
        if (kind == '.')
            compound.classes.push_back(name);
        else
            compound.id = name;
        specificity += kind == '.' ? ClassSpecificity : IdSpecificity;
    }
    return true;
}

// Indexes a selector by the most selective part that an element must match.
void StyleSheet::addToIndex(std::size_t selector)
{
    const Compound& last = m_selectors[selector].compounds.back();
    if (!last.id.empty())
        m_byId[last.id].push_back(selector);
    else if (!last.classes.empty())
        m_byClass[last.classes.front()].push_back(selector);
    else
        m_byType[static_cast<std::size_t>(last.type)].push_back(selector);
}

void StyleSheet::apply(const DocumentTree& tree, unsigned node, Cascade& cascade)
{
    if (isEmpty())
        return;
    applyBucket(m_byType[static_cast<std::size_t>(ElementName::Unknown)], tree, node, cascade);
    applyBucket(m_byType[static_cast<std::size_t>(tree.name(node))], tree, node, cascade);
    const auto applyNamed = [&](const auto& index, std::string_view name) {
        const auto found = index.find(name);
        if (found != index.end())
            applyBucket(found->second, tree, node, cascade);
    };
    forEachClass(tree.value(node, AttributeName::Class), [&](std::string_view name) { applyNamed(m_byClass, name); });
    applyNamed(m_byId, tree.value(node, AttributeName::Id));
    if (m_tests > m_limits.selectorTests)
        m_diagnostics.fail("found style sheets that take too long to apply, expected fewer or simpler rules");
}

void StyleSheet::applyBucket(const Bucket& bucket, const DocumentTree& tree, unsigned node, Cascade& cascade)
{
    for (std::size_t index : bucket) {
        const Selector& selector = m_selectors[index];
        if (m_tests > m_limits.selectorTests || !matches(selector, tree, node))
            continue;
        const std::uint64_t weight = Weight::ofRule(selector.specificity, selector.order);
        for (std::size_t i = selector.firstDeclaration; i < selector.endDeclaration; ++i) {
            const Declaration& declaration = m_declarations[i];
            cascade.set(
                declaration.property, declaration.value, weight | (declaration.isImportant ? Weight::Important : 0));
        }
        m_tests += selector.cost;
    }
}

bool StyleSheet::matches(const Selector& selector, const DocumentTree& tree, unsigned node)
{
    const std::size_t last = selector.compounds.size() - 1;
    return matchesCompound(selector.compounds[last], tree, node) && matchesAbove(selector, last, tree, node);
}

// Whether the compounds to the left of `compound` match the ancestors of a node that `compound` itself matches.
bool StyleSheet::matchesAbove(const Selector& selector, std::size_t compound, const DocumentTree& tree, unsigned node)
{
    if (compound == 0)
        return true;
    const Compound& wanted = selector.compounds[compound - 1];
    for (unsigned above = tree.parent(node); above != Element::NoNode; above = tree.parent(above)) {
        if (matchesCompound(wanted, tree, above) && matchesAbove(selector, compound - 1, tree, above))
            return true;
        if (selector.compounds[compound].isChild || m_tests > m_limits.selectorTests)
            return false;
    }
    return false;
}

bool StyleSheet::matchesCompound(const Compound& compound, const DocumentTree& tree, unsigned node)
{
    ++m_tests;
    if (compound.type != ElementName::Unknown && compound.type != tree.name(node))
        return false;
    if (!compound.id.empty() && compound.id != tree.value(node, AttributeName::Id))
        return false;
    for (std::string_view wanted : compound.classes) {
        bool isFound = false;
        const std::string_view classes = tree.value(node, AttributeName::Class);
        forEachClass(classes, [&](std::string_view name) { isFound = isFound || name == wanted; });
        m_tests += classes.size() / BytesPerStep;
        if (!isFound)
            return false;
    }
    return true;
}

} // namespace mirn::zelsvg
