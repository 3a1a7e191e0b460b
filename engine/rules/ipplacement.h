// SPDX-License-Identifier: MIT
#pragma once

#include "engine/rules/pairrules.h"
#include "engine/rules/proposal.h"

#include <QString>

#include <vector>

namespace mirn::zelengine {

class Design;
class Device;
struct Site;

// Places an IP on a unit by placing its parts there, and in one neighbouring unit if that unit is too small. What is
// fixed or locked stays on its site.
class IpPlacement final
{
public:
    // Both must outlive the object.
    IpPlacement(const Device& device, const Design& design, PairRules::Rules inForce);

    [[nodiscard]] Proposal propose(int ip, const Site& site) const;

private:
    struct Parts
    {
        std::vector<int> movable;
        std::vector<int> held;
    };

    [[nodiscard]] Parts partsOf(int ip) const;
    [[nodiscard]] Proposal fill(int ip, const Parts& parts, const std::vector<QString>& units) const;
    [[nodiscard]] Refusal refusalByHeld(const std::vector<int>& held, const std::vector<QString>& units) const;
    [[nodiscard]] Refusal refusalByOthers(const Proposal& proposal) const;
    [[nodiscard]] bool isInForce(const Proposal& proposal) const;

    const Device& m_device;
    const Design& m_design;
    const PairRules m_rules;
    const PairRules::Rules m_inForce;
};

} // namespace mirn::zelengine
