// SPDX-License-Identifier: MIT
#include "host/design/designcommands.h"

#include "engine/model/device.h"
#include "engine/model/resourceparameter.h"
#include "host/tcl/tclinterpreter.h"

#include <algorithm>
#include <functional>
#include <utility>

namespace mirn::zelchip::designcommands {

namespace {

using zelengine::Design;
using zelengine::Resource;
using zelengine::SettingChanges;

const QString ResourceCommand = QStringLiteral("zel_resource");
const QString SettingCommand = QStringLiteral("zel_setting");

// Each removed resource gets a command of its own, so that each can be restored by itself. A child must be removed
// while its parent still exists: its path begins with that of the parent, so descending order puts it first.
QStringList removals(const Design& design)
{
    QStringList paths = design.removedPaths();
    std::sort(paths.begin(), paths.end(), std::greater<>());
    QStringList commands;
    for (const QString& path : std::as_const(paths))
        commands.append(remove(path));
    return commands;
}

std::vector<Move> movesBetween(const Design& pristine, const Design& to)
{
    std::vector<Move> result;
    for (int index : to.all()) {
        const Resource& resource = to.resource(index);
        const int before = pristine.resource(index).site;
        if (!resource.fixed && resource.site != before)
            result.push_back({resource.path, before, resource.site});
    }
    return result;
}

// Locks come after all placements, because only what is placed can be locked.
QStringList locks(const Design& design)
{
    QStringList commands;
    for (int index : design.all()) {
        if (design.resource(index).locked)
            commands.append(lock(design.resource(index).path));
    }
    return commands;
}

QStringList configurations(const Design& design)
{
    QStringList commands;
    for (int index : design.all()) {
        const Resource& resource = design.resource(index);
        for (const zelengine::ResourceParameter& parameter : zelengine::parametersOf(resource.type)) {
            const QString value = design.parameter(index, parameter.key);
            if (value != design.originalParameter(index, parameter.key))
                commands.append(configure(resource.path, parameter.key, value));
        }
    }
    return commands;
}

// Sets in `store` every value that differs from `wanted` and returns the commands for it. A value that holds for
// several keys may change one that was already right, so one round may not be enough.
QStringList settingsOfSite(
    const zelengine::Site& site, zelengine::SettingStore& store, const zelengine::SettingStore& wanted)
{
    QStringList commands;
    const QString couple = QStringLiteral(":");
    for (std::size_t round = 0;
         round <= site.settings.size() && store.changes().value(site.id) != wanted.changes().value(site.id); ++round) {
        for (const zelengine::SiteSetting& known : site.settings) {
            const QString value = wanted.value(site.id, known.key);
            if (known.key.contains(couple) || store.value(site.id, known.key) == value)
                continue;
            store.setChanges(site.id, store.propose(site.id, known.key, value).changes);
            commands.append(setting(site.id, known.key, value));
        }
    }
    return commands;
}

} // namespace

QString place(const QString& resource, int site)
{
    return TclInterpreter::list({ResourceCommand, QStringLiteral("place"), QStringLiteral("-rsc"), resource,
        QStringLiteral("-id"), QString::number(site)});
}

QString reset(const QString& resource)
{
    return TclInterpreter::list({ResourceCommand, QStringLiteral("reset"), QStringLiteral("-ip"), resource});
}

QString remove(const QString& resource)
{
    return TclInterpreter::list({ResourceCommand, QStringLiteral("remove"), QStringLiteral("-ip"), resource});
}

QString restore(const QString& resource)
{
    return TclInterpreter::list({ResourceCommand, QStringLiteral("restore"), QStringLiteral("-ip"), resource});
}

QString lock(const QString& resource)
{
    return TclInterpreter::list({ResourceCommand, QStringLiteral("lock"), QStringLiteral("-ip"), resource});
}

QString unlock(const QString& resource)
{
    return TclInterpreter::list({ResourceCommand, QStringLiteral("unlock"), QStringLiteral("-ip"), resource});
}

QString configure(const QString& resource, const QString& key, const QString& value)
{
    return TclInterpreter::list({ResourceCommand, QStringLiteral("configure"), QStringLiteral("-ip"), resource,
        QStringLiteral("-key"), key, QStringLiteral("-value"), value});
}

QString setting(int site, const QString& key, const QString& value)
{
    return TclInterpreter::list({SettingCommand, QStringLiteral("-id"), QString::number(site), QStringLiteral("-key"),
        key, QStringLiteral("-value"), value});
}

QStringList moves(const std::vector<Move>& moves)
{
    QStringList resets;
    QStringList placements;
    for (const Move& move : moves) {
        if (move.from >= 0)
            resets.append(reset(move.resource));
        if (move.to >= 0)
            placements.append(place(move.resource, move.to));
    }
    return resets + placements;
}

QStringList settings(const zelengine::Device& device, const SettingChanges& from, const SettingChanges& to)
{
    zelengine::SettingStore store(device);
    zelengine::SettingStore wanted(device);
    for (auto it = from.begin(); it != from.end(); ++it)
        store.setChanges(it.key(), it.value());
    for (auto it = to.begin(); it != to.end(); ++it)
        wanted.setChanges(it.key(), it.value());
    QList<int> carriers = from.keys() + to.keys();
    std::sort(carriers.begin(), carriers.end());
    carriers.erase(std::unique(carriers.begin(), carriers.end()), carriers.end());
    QStringList commands;
    for (int carrier : std::as_const(carriers)) {
        if (const zelengine::Site* site = device.site(carrier))
            commands += settingsOfSite(*site, store, wanted);
    }
    return commands;
}

QStringList between(const Design& pristine, const Design& to)
{
    return removals(to) + moves(movesBetween(pristine, to)) + locks(to) + configurations(to);
}

} // namespace mirn::zelchip::designcommands
