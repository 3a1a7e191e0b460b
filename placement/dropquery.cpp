// SPDX-License-Identifier: MIT
#include "placement/dropquery.h"

#include "platform/contract/zelchipengine.h"
#include "platform/contract/zeltext.h"
#include "platform/contract/zeltrace.h"

namespace mirn::zelchipview {

namespace {

void traceParameters(const QString& resource, const QString& site, const char* caller)
{
    // Both values are substituted by one call, because a resource name may contain "%2".
    const std::string text = toEngineText(QStringLiteral("The params is %1, %2").arg(resource, site));
    diagTrace(text.c_str(), caller);
}

} // namespace

bool DropQuery::isAllowed(const QString& resource, const QString& site) const
{
    diagTrace("call ZEL engine API: canDrop()", "canDrop");
    const std::string engineResource = toEngineText(resource);
    const std::string engineSite = toEngineText(site);
    traceParameters(resource, site, "canDrop");
    const bool isAllowed = m_engine && m_engine->canDrop(&engineResource, &engineSite);
    diagTrace("end", "canDrop");
    return isAllowed;
}

QList<int> DropQuery::probableSites(const QString& resource, const QString& site, const char* caller) const
{
    diagTrace("call ZEL engine API: showProbPlaceItem()", caller);
    const std::string engineResource = toEngineText(resource);
    const std::string engineSite = toEngineText(site);
    std::list<std::string> items;
    traceParameters(resource, site, caller);
    if (m_engine)
        m_engine->showProbPlaceItem(&engineResource, &engineSite, items);
    diagTrace("end", caller);
    QList<int> ids;
    for (const std::string& item : items)
        ids.append(fromEngineText(item).toInt());
    return ids;
}

} // namespace mirn::zelchipview
