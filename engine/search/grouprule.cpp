// SPDX-License-Identifier: MIT
#include "engine/search/grouprule.h"

#include "engine/model/device.h"

namespace mirn::zelengine {

bool GroupRule::isFull(const Device& device, const Design& design, int resource, const Site& site) const
{
    if (kind != Kind::AtMost || site.group.isEmpty() || !concerns(design.resource(resource)))
        return false;
    int placed = 0;
    for (const Site* other : device.sitesOfGroup(site.group)) {
        const int occupant = design.occupant(other->id);
        placed += occupant >= 0 && occupant != resource && concerns(design.resource(occupant)) ? 1 : 0;
    }
    return placed >= most;
}

std::vector<GroupRule> groupRulesOf(const Device& /*device*/)
{
    GroupRule voltages;
    voltages.type = ResourceType::Uvccio;
    voltages.textOf = [](const Resource& supply) { return supply.voltage; };
    voltages.sentence = QStringLiteral("the supplies of one bank have one voltage");
    voltages.same = PlacementRules::Voltages;
    return {voltages};
}

} // namespace mirn::zelengine
