// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/design.h"
#include "engine/rules/placementrules.h"
#include "engine/rules/proposal.h"

#include <QHash>

#include <vector>

namespace mirn::zelengine {

// Finds out which of many wishes for the places of resources can be fulfilled together. Whatever has a wish may leave
// its present site, so the order of the wishes does not matter if all of them lead to a legal state. Where wishes
// exclude each other, the earlier one is fulfilled, and a resource whose wish is refused keeps its present site, which
// goes before the wishes of others. It takes the time of placing everything once, apart from rare knots.
class JointPlacement final
{
public:
    // Each resource has one wish at most; -1 as a site takes it off its site. Device and design must live as long.
    JointPlacement(const Device& device, const Design& design, std::vector<Placement> wishes);

    // Why each wish is refused, in their order; empty for those that PlacementRules::refusalToMove() allows together.
    [[nodiscard]] const std::vector<Refusal>& refusals() const { return m_refusals; }

private:
    enum class State { Open, Fulfilled, Refused };

    [[nodiscard]] Refusal refusalOfItself(const Placement& wish) const;
    [[nodiscard]] bool placeAll();
    [[nodiscard]] bool fulfil(std::size_t wish);
    [[nodiscard]] bool keepSite(std::size_t wish);
    [[nodiscard]] int wishInTheWay(const Refusal& refusal, int site) const;
    void tryAgain(std::size_t wish);

    const Device& m_device;
    const Design& m_before;
    const std::vector<Placement> m_wishes;
    Design m_after;
    const PlacementRules m_rules; // of the state afterwards
    QHash<int, int> m_wishOf; // by resource; indices into m_wishes
    std::vector<State> m_states; // by wish, as is the next
    std::vector<Refusal> m_refusals;
};

} // namespace mirn::zelengine
