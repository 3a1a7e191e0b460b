// SPDX-License-Identifier: MIT
#include "host/design/designcommands.h"

#include "engine/resourceparameter.h"
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

// Each of a command of its own, so that each can come back by itself; what lies deeper goes first, while its parent is
// still there. A parent's path begins its child's, so it stands before it in the order of the paths.
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

QStringList between(const Design& pristine, const Design& to)
{
    return removals(to) + moves(movesBetween(pristine, to)) + configurations(to);
}

} // namespace mirn::zelchip::designcommands
