// SPDX-License-Identifier: MIT
#include "host/design/designchange.h"

#include "engine/model/design.h"
#include "engine/referenceengine.h"
#include "host/design/designcommands.h"

#include <utility>

namespace mirn::zelchip {

using zelengine::Design;
using zelengine::Placement;
using zelengine::ReferenceEngine;

namespace {

// Removed resources keep their index, so this finds their path as well.
QString pathOf(const Design& design, int resource)
{
    return design.resource(resource).path;
}

} // namespace

void DesignChange::takeSites(const Design& design, const std::vector<Placement>& placements)
{
    for (const Placement& placement : placements) {
        const int before = design.resource(placement.resource).site;
        if (before == placement.site)
            continue;
        sitesBefore.push_back({placement.resource, before});
        sitesAfter.push_back(placement);
    }
}

// The results are ignored: the engine accepted the change when it was new, and the design is again in that state.
void DesignChange::apply(ReferenceEngine& engine, bool isForward) const
{
    if (removes(isForward)) {
        (void)engine.remove(branchPath);
        return;
    }
    if (restores(isForward))
        (void)engine.restore(branchPath);
    engine.setLocked(isForward ? lockedBefore : lockedAfter, false);
    engine.setSites(isForward ? sitesAfter : sitesBefore);
    engine.setLocked(isForward ? lockedAfter : lockedBefore, true);
    for (const Parameter& parameter : parameters)
        engine.setParameter(parameter.resource, parameter.key, isForward ? parameter.after : parameter.before);
    if (settingsSite >= 0)
        engine.setSettingChanges(settingsSite, isForward ? settingsAfter : settingsBefore);
}

// What is locked can neither be taken off its site nor be locked before it is placed. Therefore locks are taken off
// first and set last.
QStringList DesignChange::commands(const ReferenceEngine& engine, bool isForward) const
{
    const Design& design = engine.design();
    if (removes(isForward))
        return {designcommands::remove(branchPath)};
    QStringList commands;
    if (restores(isForward))
        commands.append(designcommands::restore(branchPath));
    else
        for (int resource : isForward ? lockedBefore : lockedAfter)
            commands.append(designcommands::unlock(pathOf(design, resource)));
    commands += moves(design, isForward);
    for (const Parameter& parameter : parameters)
        commands.append(designcommands::configure(
            pathOf(design, parameter.resource), parameter.key, isForward ? parameter.after : parameter.before));
    for (int resource : isForward ? lockedAfter : lockedBefore)
        commands.append(designcommands::lock(pathOf(design, resource)));
    return commands + settings(engine, isForward);
}

QStringList DesignChange::moves(const Design& design, bool isForward) const
{
    std::vector<designcommands::Move> moves;
    for (std::size_t i = 0; i < sitesBefore.size(); ++i) {
        designcommands::Move move{pathOf(design, sitesBefore[i].resource), sitesBefore[i].site, sitesAfter[i].site};
        if (!isForward)
            std::swap(move.from, move.to);
        if (move.from != move.to)
            moves.push_back(move);
    }
    return designcommands::moves(moves);
}

QStringList DesignChange::settings(const ReferenceEngine& engine, bool isForward) const
{
    if (settingsSite < 0)
        return {};
    const zelengine::SettingChanges before{{settingsSite, settingsBefore}};
    const zelengine::SettingChanges after{{settingsSite, settingsAfter}};
    return designcommands::settings(engine.device(), isForward ? before : after, isForward ? after : before);
}

} // namespace mirn::zelchip
