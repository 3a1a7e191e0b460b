// SPDX-License-Identifier: MIT
#include "engine/rules/jointplacement.h"

#include "engine/model/device.h"
#include "engine/rules/lockrules.h"

#include <utility>

namespace mirn::zelengine {

JointPlacement::JointPlacement(const Device& device, const Design& design, std::vector<Placement> wishes)
    : m_device(device)
    , m_before(design)
    , m_wishes(std::move(wishes))
    , m_after(design)
    , m_rules(device, m_after)
    , m_states(m_wishes.size(), State::Open)
    , m_refusals(m_wishes.size())
{
    std::vector<std::size_t> possible;
    for (std::size_t wish = 0; wish < m_wishes.size(); ++wish) {
        m_wishOf.insert(m_wishes[wish].resource, static_cast<int>(wish));
        m_refusals[wish] = refusalOfItself(m_wishes[wish]);
        if (m_refusals[wish].isEmpty())
            possible.push_back(wish);
        else
            m_states[wish] = State::Refused;
    }
    while (!placeAll()) { } // each round refuses a further wish
    for (const std::size_t wish : possible)
        tryAgain(wish);
}

// What stands against a wish whatever becomes of the others.
Refusal JointPlacement::refusalOfItself(const Placement& wish) const
{
    const Resource& resource = m_before.resource(wish.resource);
    if (!hasOwnSite(resource.type))
        return resource.isFolder()
            ? m_rules.refusalToPlace(wish.resource)
            : QStringLiteral("%1 is placed by its parts, which have sites of their own").arg(resource.path);
    const bool stays = wish.site == resource.site;
    return resource.isHeld() && !stays ? lockrules::refusalToLeave(m_device, resource) : Refusal();
}

// Returns false if a refused wish leads to a knot that this round cannot undo.
bool JointPlacement::placeAll()
{
    m_after = m_before;
    for (std::size_t wish = 0; wish < m_wishes.size(); ++wish) {
        if (m_states[wish] == State::Refused || m_before.resource(m_wishes[wish].resource).isHeld())
            continue;
        m_states[wish] = State::Open;
        m_after.setSite(m_wishes[wish].resource, -1);
    }
    for (std::size_t wish = 0; wish < m_wishes.size(); ++wish) {
        if (m_states[wish] == State::Open && !fulfil(wish) && !keepSite(wish))
            return false;
    }
    return true;
}

bool JointPlacement::fulfil(std::size_t wish)
{
    const auto [resource, site] = m_wishes[wish];
    const bool isThere = m_after.resource(resource).site == site;
    const bool isPossible = isThere || site < 0 || m_rules.propose(resource, site).isAllowed();
    if (isPossible && !isThere)
        m_after.setSite(resource, site);
    m_states[wish] = isPossible ? State::Fulfilled : State::Refused;
    return isPossible;
}

// Puts the resource of a refused wish back on its site, and so on with those that must leave for it.
bool JointPlacement::keepSite(std::size_t refused)
{
    std::vector<std::size_t> waiting{refused};
    while (!waiting.empty()) {
        const int resource = m_wishes[waiting.back()].resource;
        waiting.pop_back();
        const int site = m_before.resource(resource).site;
        while (site >= 0 && m_after.resource(resource).site != site) {
            const Proposal proposal = m_rules.propose(resource, site);
            if (proposal.isAllowed()) {
                m_after.setSite(resource, site);
                break;
            }
            const int other = wishInTheWay(proposal.refusal, site);
            if (other < 0)
                return false;
            m_after.setSite(m_wishes[static_cast<std::size_t>(other)].resource, -1);
            m_states[static_cast<std::size_t>(other)] = State::Refused;
            waiting.push_back(static_cast<std::size_t>(other));
        }
    }
    return true;
}

// Returns -1 if what is in the way has no fulfilled wish.
int JointPlacement::wishInTheWay(const Refusal& refusal, int site) const
{
    const int occupant = m_after.occupant(site);
    const int wish = m_wishOf.value(occupant >= 0 ? occupant : refusal.other(), -1);
    const bool isMoved = wish >= 0 && m_states[static_cast<std::size_t>(wish)] == State::Fulfilled
        && !m_before.resource(m_wishes[static_cast<std::size_t>(wish)].resource).isHeld();
    return isMoved ? wish : -1;
}

// What stood in the way of a refused wish may have been refused later. What still does is the reason.
void JointPlacement::tryAgain(std::size_t wish)
{
    if (m_states[wish] != State::Refused)
        return;
    const auto [resource, site] = m_wishes[wish];
    const int kept = m_after.resource(resource).site;
    m_after.setSite(resource, -1);
    Proposal proposal = site < 0 ? Proposal() : m_rules.propose(resource, site);
    m_after.setSite(resource, proposal.isAllowed() ? site : kept);
    m_refusals[wish] = std::move(proposal.refusal);
    m_states[wish] = m_refusals[wish].isEmpty() ? State::Fulfilled : State::Refused;
}

} // namespace mirn::zelengine
