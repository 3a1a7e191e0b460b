// SPDX-License-Identifier: MIT
#include "engine/rules/lockrules.h"

#include "engine/model/design.h"
#include "engine/model/device.h"

#include <algorithm>
#include <utility>

namespace mirn::zelengine::lockrules {

namespace {

QString siteNameOf(const Device& device, const Resource& resource)
{
    const Site* site = device.site(resource.site);
    return site ? site->name : QString();
}

template <typename Condition> std::vector<int> partsThat(const Design& design, int resource, const Condition& isMeant)
{
    std::vector<int> parts = design.subtree(resource);
    const auto isOther = [&](int part) { return !isMeant(design.resource(part)); };
    parts.erase(std::remove_if(parts.begin(), parts.end(), isOther), parts.end());
    return parts;
}

} // namespace

LockProposal proposeLock(const Device& device, const Design& design, int resource)
{
    std::vector<int> parts = partsThat(
        design, resource, [](const Resource& part) { return part.site >= 0 && !part.fixed && !part.locked; });
    if (!parts.empty())
        return {std::move(parts), {}};
    const std::vector<int> held = partsThat(design, resource, [](const Resource& part) { return part.isHeld(); });
    if (held.empty())
        return {{},
            QStringLiteral("%1 is not placed, and only what is placed can be locked")
                .arg(design.resource(resource).path)};
    const Resource& first = design.resource(held.front());
    const QString sentence
        = first.fixed ? QStringLiteral("%1 is fixed on %2 already") : QStringLiteral("%1 is locked on %2 already");
    return {{}, sentence.arg(first.path, siteNameOf(device, first))};
}

LockProposal proposeUnlock(const Device& device, const Design& design, int resource)
{
    std::vector<int> parts = partsThat(design, resource, [](const Resource& part) { return part.locked; });
    if (!parts.empty())
        return {std::move(parts), {}};
    const Resource& top = design.resource(resource);
    if (top.fixed)
        return {{},
            QStringLiteral("%1 is fixed on %2 by the design file; only locks can be taken off")
                .arg(top.path, siteNameOf(device, top))};
    return {{}, QStringLiteral("%1 is not locked").arg(top.path)};
}

Refusal refusalToLeave(const Device& device, const Resource& resource)
{
    if (resource.fixed)
        return QStringLiteral("%1 is fixed on %2").arg(resource.path, siteNameOf(device, resource));
    if (resource.locked)
        return QStringLiteral("%1 is locked on %2; unlock it first").arg(resource.path, siteNameOf(device, resource));
    return {};
}

} // namespace mirn::zelengine::lockrules
