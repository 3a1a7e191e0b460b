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
    return sites.empty() ? resourceTypeName(resource.type) : device.kindOf(*sites.front()).title;
}

QString withSite(const Device& device, const Resource& resource)
{
    const Site* site = device.site(resource.site);
    return site ? QStringLiteral("%1 (%2)").arg(resource.path, site->name)
                : QStringLiteral("%1 (not placed)").arg(resource.path);
}

bool isClock(const Resource& resource)
{
    return resource.type == ResourceType::ExtRef || resource.type == ResourceType::Pll;
}

// A clock feeds whole IPs, and each of their channels is connected to it.
QStringList connectionLines(
    const Device& device, const Design& design, const std::vector<Connection>& connections, int index)
{
    QStringList lines;
    for (const Connection& connection : connections) {
        if (!isClock(design.resource(connection.from)))
            continue;
        const int ip = design.ipOf(connection.to);
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
    if (resource.type != ResourceType::Folder)
        lines.append(QStringLiteral("%1, %2").arg(kindTitle(device, resource), summary));
    if (!resource.voltage.isEmpty())
        lines.append(QStringLiteral("Needs %1").arg(resource.voltage));
    lines += connectionLines(device, design, connections, index);
    for (const Problem& problem : problems) {
        const bool isSaid = problem.severity == Problem::Severity::Warning && resource.site < 0;
        if (problem.resources.contains(resource.path) && !isSaid)
            lines.append(problem.sentence);
    }
    return lines;
}

} // namespace mirn::zelengine
