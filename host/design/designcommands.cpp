// SPDX-License-Identifier: MIT
#include "host/design/designcommands.h"

#include "engine/resourceparameter.h"
#include "host/tcl/tclinterpreter.h"

#include <algorithm>
#include <utility>

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

std::vector<Move> movesBetween(const Design& from, const Design& to)
{
    std::vector<Move> result;
    for (int index : to.all()) {
        const Resource& resource = to.resource(index);
        const int before = siteIn(from, resource.path);
        if (!resource.fixed && resource.site != before)
            result.push_back({resource.path, before, resource.site});
    }
    return result;
}

QStringList configurations(const Design& from, const Design& to)
{
    QStringList commands;
    for (int index : to.all()) {
        const Resource& resource = to.resource(index);
        const int before = from.find(resource.path);
        for (const zelengine::ResourceParameter& parameter : zelengine::parametersOf(resource.type)) {
            const QString& key = parameter.key;
            // What comes back is as the design file has it.
            const QString old = before < 0 ? to.originalParameter(index, key) : from.parameter(before, key);
            if (to.parameter(index, key) != old)
                commands.append(configure(resource.path, key, to.parameter(index, key)));
        }
    }
    return commands;
}

// Calls `visit` for each setting, in a fixed order.
template <typename Visitor> void forEach(const SettingChanges& changes, const Visitor& visit)
{
    QList<int> sites = changes.keys();
    std::sort(sites.begin(), sites.end());
    for (int site : std::as_const(sites)) {
        const QHash<QString, QString> values = changes.value(site);
        QStringList keys = values.keys();
        keys.sort();
        for (const QString& key : std::as_const(keys))
            visit(site, key, values.value(key));
    }
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

QStringList settings(const SettingChanges& from, const SettingChanges& to, const DefaultSetting& defaultSetting)
{
    QStringList commands;
    forEach(from, [&](int site, const QString& key, const QString&) {
        if (!to.value(site).contains(key))
            commands.append(setting(site, key, defaultSetting(site, key)));
    });
    forEach(to, [&](int site, const QString& key, const QString& value) {
        const QHash<QString, QString> before = from.value(site);
        if (!before.contains(key) || before.value(key) != value)
            commands.append(setting(site, key, value));
    });
    return commands;
}

QStringList between(const Design& from, const Design& to)
{
    return removals(from, to) + restorations(from, to) + moves(movesBetween(from, to)) + configurations(from, to);
}

} // namespace mirn::zelchip::designcommands
