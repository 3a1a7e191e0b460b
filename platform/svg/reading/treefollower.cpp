// SPDX-License-Identifier: MIT
#include "platform/svg/reading/treefollower.h"

#include "platform/svg/base/number.h"

#include <algorithm>
#include <utility>

namespace mirn::zelsvg {

namespace {

constexpr std::size_t NodesPerStep = 4096;

} // namespace

TreeFollower::TreeFollower(const DocumentTree& tree, StyleSheet& sheet, ElementReceiver& receiver,
    Diagnostics& diagnostics, const Limits& limits, ReportProgress reportProgress)
    : m_tree(tree)
    , m_sheet(sheet)
    , m_receiver(receiver)
    , m_diagnostics(diagnostics)
    , m_limits(limits)
    , m_gradients(tree, sheet, diagnostics)
    , m_reportProgress(std::move(reportProgress))
{
    m_diagnostics.setPositionSource(this);
}

TreeFollower::~TreeFollower()
{
    m_diagnostics.setPositionSource(nullptr);
}

void TreeFollower::follow()
{
    if (m_tree.size() > 0)
        follow(0);
}

// The recursion is as deep as the nesting of elements, which the builder limits.
void TreeFollower::follow(unsigned node)
{
    m_node = node;
    countNode(node);
    if (m_diagnostics.hasFailed())
        return;
    if (m_tree.name(node) == ElementName::CharacterData) {
        m_receiver.characters(m_tree.text(node));
        return;
    }
    Element element;
    m_tree.fill(node, element);
    if (!m_receiver.startElement(element))
        return;
    for (unsigned inner = node + 1; inner < m_tree.end(node); inner = m_tree.end(inner)) {
        follow(inner);
        if (m_diagnostics.hasFailed())
            break;
    }
    m_receiver.endElement();
}

void TreeFollower::countNode(unsigned node)
{
    if (++m_followed % NodesPerStep == 0 && !m_reportProgress(static_cast<double>(node) / m_tree.size()))
        m_diagnostics.fail("reading it was cancelled");
    if (m_openInstances.empty())
        return;
    m_instanceBytes += m_tree.byteCount(node);
    if (++m_instances > m_limits.instances || m_instanceBytes > m_limits.instanceBytes)
        m_diagnostics.fail("found <use> elements that multiply beyond any sensible drawing, expected fewer of them");
}

bool TreeFollower::serverColor(std::string_view name, Color& color, bool& isFound)
{
    return m_gradients.find(name, color, isFound);
}

// Returns Element::NoNode if the target is missing or not in this file.
unsigned TreeFollower::target(const Element& use) const
{
    std::string_view reference = trimmed(use.value(AttributeName::Href));
    if (reference.empty())
        reference = trimmed(use.value(AttributeName::XlinkHref));
    const bool isLocal = !reference.empty() && reference.front() == '#';
    return isLocal ? m_tree.find(reference.substr(1)) : Element::NoNode;
}

void TreeFollower::drawInstance(const Element& use)
{
    const unsigned node = target(use);
    bool isAround = node == Element::NoNode
        || std::find(m_openInstances.begin(), m_openInstances.end(), node) != m_openInstances.end();
    for (unsigned around = use.node(); !isAround && around != Element::NoNode; around = m_tree.parent(around))
        isAround = around == node;
    if (isAround) {
        m_diagnostics.warn(Unsupported::Reference);
        return;
    }
    m_openInstances.push_back(node);
    m_instance = {use.value(AttributeName::Width), use.value(AttributeName::Height), true};
    const unsigned before = m_node;
    follow(node);
    m_node = before;
    m_instance = {};
    m_openInstances.pop_back();
}

TreeFollower::Instance TreeFollower::takeInstance()
{
    return std::exchange(m_instance, {});
}

} // namespace mirn::zelsvg
