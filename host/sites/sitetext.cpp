// SPDX-License-Identifier: MIT
#include "host/sites/sitetext.h"

#include "engine/model/device.h"
#include "engine/referenceengine.h"
#include "host/tcl/translation.h"

#include <QCoreApplication>
#include <QRegularExpression>
#include <QStringList>

#include <algorithm>

namespace mirn::zelchip {

namespace {

const QString Separator = QStringLiteral(" > ");

QString withRowAndColumn(const QString& name)
{
    static const QRegularExpression pattern(QStringLiteral("^(?:(.*)_)?R(\\d+)C(\\d+)$"));
    const QRegularExpressionMatch match = pattern.match(name);
    if (!match.hasMatch())
        return name;
    const QString cell = tr("row %1, column %2").arg(match.captured(2), match.captured(3));
    return match.captured(1).isEmpty() ? cell : match.captured(1) + Separator + cell;
}

} // namespace

QString placeOf(const zelengine::Site& site)
{
    if (site.group.isEmpty() || site.group == site.name)
        return withRowAndColumn(site.name);
    const bool isNamedAfterGroup = site.name.startsWith(site.group + QLatin1Char('_'));
    return site.group + Separator
        + withRowAndColumn(isNamedAfterGroup ? site.name.mid(site.group.size() + 1) : site.name);
}

using zelengine::ReferenceEngine;
using zelengine::Resource;
using zelengine::Site;

namespace {

QString describingTr(const char* text)
{
    return QCoreApplication::translate("SiteDescription", text);
}

QString occupantOf(const ReferenceEngine& engine, const Site& site)
{
    const int occupant = engine.design().occupant(site.id);
    if (occupant < 0)
        return {};
    const Resource& resource = engine.design().resource(occupant);
    if (resource.locked)
        return describingTr("%1, which is locked").arg(resource.path);
    return resource.fixed ? describingTr("%1, which is fixed").arg(resource.path) : resource.path;
}

// Whether parts of the IPs that a unit takes go there.
bool takesParts(const zelengine::Device& device, const Site& unit, const Site& site)
{
    const auto& accepted = device.kindOf(unit).accepts;
    return std::any_of(accepted.begin(), accepted.end(),
        [&](const zelengine::ResourceType* type) { return type->parts && device.accepts(site, type->parts); });
}

// An IP is placed on a unit by placing its channels there.
QString stateOfUnit(const ReferenceEngine& engine, const Site& unit)
{
    int channels = 0;
    QStringList occupants;
    for (const Site* site : engine.device().sitesOfGroup(unit.group)) {
        if (!takesParts(engine.device(), unit, *site))
            continue;
        ++channels;
        const QString occupant = occupantOf(engine, *site);
        if (!occupant.isEmpty())
            occupants.append(occupant);
    }
    if (occupants.isEmpty())
        return describingTr("free");
    return describingTr("%1 of %2 channels occupied by %3")
        .arg(QString::number(occupants.size()), QString::number(channels), occupants.join(QStringLiteral(", ")));
}

QString stateOf(const ReferenceEngine& engine, const Site& site)
{
    const QString occupant = occupantOf(engine, site);
    if (!occupant.isEmpty())
        return describingTr("occupied by %1").arg(occupant);
    if (engine.device().kindOf(site).accepts.empty())
        return describingTr("takes no resource");
    return engine.device().isUnit(site) ? stateOfUnit(engine, site) : describingTr("free");
}

} // namespace

QString describeSite(const ReferenceEngine& engine, int id)
{
    const Site* site = engine.device().site(id);
    if (!site)
        return {};
    QStringList parts{site->name, engine.device().kindOf(*site).title, stateOf(engine, *site)};
    const QString disabling = engine.settings().disablingSetting(*site);
    if (!disabling.isEmpty())
        parts.append(describingTr("out of use, because %1").arg(disabling));
    return parts.join(QStringLiteral(", "));
}

} // namespace mirn::zelchip
