// SPDX-License-Identifier: MIT
#include "engine/enginequestion.h"
#include "engine/referenceengine.h"
#include "engine/resourcedescription.h"

// The engine's answers to what planning aids ask.

namespace mirn::zelengine {

std::vector<zelconnection> ReferenceEngine::connections()
{
    return withNames(keptConnections());
}

const std::vector<Connection>& ReferenceEngine::keptConnections()
{
    if (!m_connections)
        m_connections = zelengine::connectionsOf(m_device, m_design, m_settings);
    return *m_connections;
}

std::vector<zelconnection> ReferenceEngine::connectionsOf(const std::string* rsc)
{
    const int index = m_design.find(fromEngineText(*rsc));
    return index < 0 ? std::vector<zelconnection>()
                     : withNames(zelengine::connectionsOf(m_device, m_design, m_settings, index));
}

std::vector<zelconnection> ReferenceEngine::withNames(const std::vector<Connection>& found) const
{
    std::vector<zelconnection> result;
    for (const Connection& connection : found) {
        const Resource& from = m_design.resource(connection.from);
        const Resource& to = m_design.resource(connection.to);
        result.push_back(
            {toEngineText(from.path), toEngineText(to.path), from.site, to.site, toEngineText(connection.broken)});
    }
    return result;
}

std::vector<int> ReferenceEngine::sitesFor(const std::string* rsc)
{
    const int index = m_design.find(fromEngineText(*rsc));
    return index < 0 ? std::vector<int>() : rules().sitesFor(index);
}

std::vector<zelsite> ReferenceEngine::sites()
{
    std::vector<zelsite> result;
    for (const Site& site : m_device.sites())
        result.push_back({site.id, toEngineText(site.name), toEngineText(m_device.kindOf(site).title)});
    return result;
}

std::vector<int> ReferenceEngine::sitesOfKind(const std::string* rsc)
{
    std::vector<int> result;
    const int index = m_design.find(fromEngineText(*rsc));
    if (index < 0 || m_design.resource(index).isFolder())
        return result;
    for (const Site* site : m_device.sitesAccepting(m_design.resource(index).type))
        result.push_back(site->id);
    return result;
}

std::string ReferenceEngine::refusalToPlace(const std::string* rsc)
{
    const QString name = fromEngineText(*rsc);
    const int index = m_design.find(name);
    return toEngineText(index < 0 ? noSuchResource(name) : rules().refusalToPlace(index).sentence());
}

std::vector<zelplacement> ReferenceEngine::placementsOf(const std::string* rsc, const std::string* site)
{
    std::vector<zelplacement> result;
    const int index = m_design.find(fromEngineText(*rsc));
    const Proposal proposal = index < 0 ? Proposal() : rules().propose(index, elementId(*site));
    if (proposal.isAllowed()) {
        for (const Placement& placement : proposal.placements)
            result.push_back({toEngineText(m_design.resource(placement.resource).path), placement.site});
    }
    return result;
}

bool ReferenceEngine::maySwap(const std::string* rsc, const std::string* other, std::string* reason)
{
    const int index = m_design.find(fromEngineText(*rsc));
    const int otherIndex = m_design.find(fromEngineText(*other));
    if (index < 0 || otherIndex < 0)
        *reason = toEngineText(noSuchResource(fromEngineText(index < 0 ? *rsc : *other)));
    else
        *reason = toEngineText(rules().proposeSwap(index, otherIndex).refusal.sentence());
    return reason->empty();
}

std::string ReferenceEngine::occupant(const std::string* site)
{
    const int index = m_design.occupant(elementId(*site));
    return index < 0 ? std::string() : toEngineText(m_design.resource(index).path);
}

int ReferenceEngine::siteOf(const std::string* rsc)
{
    const int index = m_design.find(fromEngineText(*rsc));
    return index < 0 ? -1 : m_design.resource(index).site;
}

std::string ReferenceEngine::describe(const std::string* rsc)
{
    const int index = m_design.find(fromEngineText(*rsc));
    if (index < 0)
        return {};
    const QStringList lines = describeResource(m_device, m_design, keptConnections(), problems(), index);
    return toEngineText(lines.join(QLatin1Char('\n')));
}

} // namespace mirn::zelengine
