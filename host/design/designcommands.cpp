// SPDX-License-Identifier: MIT
#include "host/design/designcommands.h"

#include "host/tcl/tclinterpreter.h"

#include <algorithm>

namespace mirn::zelchip::designcommands {

namespace {

using zelengine::Design;
using zelengine::Resource;
using zelengine::SettingChanges;

const QString ResourceCommand = QStringLiteral("zel_resource");
const QString SettingCommand = QStringLiteral("zel_setting");

// The path's site in a design; -1 where the design does not have the resource.
int siteIn(const Design& design, const QString& path)
{
    const int index = design.find(path);
    return index < 0 ? -1 : design.resource(index).site;
}

QStringList removals(const Design& from, const Design& to)
{
    QStringList commands;
    for (int index : from.all()) {
        const Resource& resource = from.resource(index);
        const bool isParentGone = resource.parent >= 0 && to.find(from.resource(resource.parent).path) < 0;
        if (to.find(resource.path) < 0 && !isParentGone)
            commands.append(remove(resource.path));
    }
    return commands;
}

// A parent's path is shorter than its child's, so it comes back first.
QStringList restorations(const Design& from, const Design& to)
{
    QStringList paths;
    const QStringList removed = from.removedPaths();
    for (const QString& path : removed) {
        if (to.find(path) >= 0)
            paths.append(path);
    }
    std::sort(paths.begin(), paths.end(), [](const QString& a, const QString& b) { return a.size() < b.size(); });
    QStringList commands;
    for (const QString& path : std::as_const(paths))
        commands.append(restore(path));
    return commands;
}

void addMoves(const Design& from, const Design& to, QStringList& commands)
{
    QStringList placements;
    for (int index : to.all()) {
        const Resource& resource = to.resource(index);
        const int before = siteIn(from, resource.path);
        if (resource.fixed || resource.site == before)
            continue;
        if (before >= 0)
            commands.append(reset(resource.path));
        if (resource.site >= 0)
            placements.append(place(resource.path, resource.site));
    }
    commands += placements;
}

void addSettings(const SettingChanges& from, const SettingChanges& to, const DefaultSetting& valueOf,
    QStringList& commands)
{
    const auto addAll = [&](const SettingChanges& changes, bool toDefaults) {
        QList<int> sites = changes.keys();
        std::sort(sites.begin(), sites.end());
        for (int site : std::as_const(sites)) {
            QStringList keys = changes.value(site).keys();
            keys.sort();
            for (const QString& key : std::as_const(keys)) {
                if (toDefaults ? !to.value(site).contains(key) : from.value(site).value(key) != to.value(site).value(key))
                    commands.append(setting(site, key, toDefaults ? valueOf(site, key) : to.value(site).value(key)));
            }
        }
    };
    addAll(from, true);
    addAll(to, false);
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

QString setting(int site, const QString& key, const QString& value)
{
    return TclInterpreter::list({SettingCommand, QStringLiteral("-id"), QString::number(site), QStringLiteral("-key"),
        key, QStringLiteral("-value"), value});
}

QStringList between(const State& from, const State& to, const DefaultSetting& valueOf)
{
    QStringList commands = removals(from.design, to.design);
    commands += restorations(from.design, to.design);
    addMoves(from.design, to.design, commands);
    addSettings(from.settings, to.settings, valueOf, commands);
    return commands;
}

} // namespace mirn::zelchip::designcommands
