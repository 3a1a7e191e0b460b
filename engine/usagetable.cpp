// SPDX-License-Identifier: MIT
#include "engine/usagetable.h"

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "platform/contract/zeltext.h"

#include <algorithm>

namespace mirn::zelengine {

namespace {

bool isUsed(const Site& site, const Device& device, const Design& design)
{
    if (!device.isUnit(site))
        return design.occupant(site.id) >= 0;
    const std::vector<const Site*> group = device.sitesOfGroup(site.group);
    return std::any_of(
        group.begin(), group.end(), [&design](const Site* member) { return design.occupant(member->id) >= 0; });
}

} // namespace

std::vector<std::string> usageHeader()
{
    return {"Used", "Available", "Usage"};
}

std::vector<std::vector<std::string>> usageRows(const Device& device, const Design& design)
{
    struct Count
    {
        int used = 0;
        int available = 0;
    };
    std::vector<Count> counts(device.kinds().size());
    for (const Site& site : device.sites()) {
        Count& count = counts[static_cast<std::size_t>(site.kind)];
        ++count.available;
        count.used += isUsed(site, device, design) ? 1 : 0;
    }
    std::vector<std::vector<std::string>> rows;
    for (std::size_t kind = 0; kind < counts.size(); ++kind) {
        const auto& [used, available] = counts[kind];
        if (device.kinds()[kind].accepts.empty() || available == 0)
            continue;
        rows.push_back({toEngineText(device.kinds()[kind].title), std::to_string(used), std::to_string(available),
            std::to_string((used * 100 + available / 2) / available) + " %"});
    }
    return rows;
}

} // namespace mirn::zelengine
