// SPDX-License-Identifier: MIT
#include "engine/resourcedescription.h"

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/resourcetree.h"
#include "engine/rules/connections.h"
#include "engine/rules/designcheck.h"
#include "platform/contract/zeltext.h"

namespace mirn::zelengine {

namespace {

// The kind of the site that it is on, or of the sites that it can be placed on.
QString kindTitle(const Device& device, const Resource& resource)
{
    if (const Site* site = device.site(resource.site))
        return device.kindOf(*site).title;
    const std::vector<const Site*> sites = device.sitesAccepting(resource.type);
    return sites.empty() ? nameOf(resource.type) : device.kindOf(*sites.front()).title;
}

QString withSite(const Device& device, const Resource& resource)
{
    const Site* site = device.site(resource.site);
    return site ? QStringLiteral("%1 (%2)").arg(resource.path, site->name)
                : QStringLiteral("%1 (not placed)").arg(resource.path);
}

// What a supply or a pad states is what it needs from its bank.
QStringList propertyLines(const Resource& resource)
{
    QStringList lines;
    for (const QString& key : resource.type ? resource.type->properties : QStringList()) {
        const QString value = resource.properties.value(key);
        if (!value.isEmpty())
            lines.append(key == resource.type->agreesOn ? QStringLiteral("Needs %1").arg(value)
                                                        : QStringLiteral("%1: %2").arg(key, value));
    }
    return lines;
}

// A source feeds whole IPs, and each of their parts is connected to it.
QStringList connectionLines(
    const Device& device, const Design& design, const std::vector<Connection>& connections, int index)
{
    QStringList lines;
    for (const Connection& connection : connections) {
        const int ip = design.ipOfPart(connection.to);
        if (!design.resource(connection.from).isSource() || ip < 0)
            continue;
        if (connection.from == index)
            lines.append(QStringLiteral("Feeds %1").arg(design.resource(ip).path));
        else if (connection.to == index || ip == index)
            lines.append(QStringLiteral("Fed by %1").arg(withSite(device, design.resource(connection.from))));
    }
    lines.removeDuplicates();
    return lines;
}

} // namespace

QStringList describeResource(const Device& device, const Design& design, const std::vector<Connection>& connections,
    const std::vector<Problem>& problems, int index)
{
    const Resource& resource = design.resource(index);
    QStringList lines{resource.path};
    const QString summary = fromEngineText(ResourceTree::summary(design, device, index));
    if (!resource.isFolder())
        lines.append(QStringLiteral("%1, %2").arg(kindTitle(device, resource), summary));
    lines += propertyLines(resource);
    lines += connectionLines(device, design, connections, index);
    for (const Problem& problem : problems) {
        const bool isSaid = problem.severity == Problem::Severity::Warning && resource.site < 0;
        if (problem.resources.contains(resource.path) && !isSaid)
            lines.append(problem.sentence);
    }
    return lines;
}

} // namespace mirn::zelengine
