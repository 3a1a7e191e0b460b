// SPDX-License-Identifier: MIT
#include "planning/planquery.h"

#include "placement/commandtexts.h"
#include "planning/planengine.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zelplanengine.h"
#include "platform/contract/zeltext.h"

namespace mirn::zelchipview {

PlanQuery::PlanQuery(zelchipengine& engine)
    : m_engine(engine)
    , m_plans(planEngineOf(engine))
{ }

bool PlanQuery::mayPlace(const QString& resource, int site, QString* refusal) const
{
    const std::string name = toEngineText(resource);
    const std::string id = std::to_string(site);
    if (m_engine.canDrop(&name, &id))
        return true;
    *refusal = fromEngineText(m_engine.refusalReason(&name, &id));
    return false;
}

bool PlanQuery::maySwap(const QString& resource, const QString& other, QString* refusal) const
{
    const std::string name = toEngineText(resource);
    const std::string otherName = toEngineText(other);
    std::string reason;
    if (m_plans.maySwap(&name, &otherName, &reason))
        return true;
    *refusal = fromEngineText(reason);
    return false;
}

QString PlanQuery::refusalToPlace(const QString& resource) const
{
    const std::string name = toEngineText(resource);
    return fromEngineText(m_plans.refusalToPlace(&name));
}

std::vector<zelplacement> PlanQuery::placementsOf(const QString& resource, int site) const
{
    const std::string name = toEngineText(resource);
    const std::string id = std::to_string(site);
    return m_plans.placementsOf(&name, &id);
}

QString PlanQuery::occupant(int site) const
{
    const std::string id = std::to_string(site);
    return fromEngineText(m_plans.occupant(&id));
}

int PlanQuery::siteOf(const QString& resource) const
{
    const std::string name = toEngineText(resource);
    return m_plans.siteOf(&name);
}

QString PlanQuery::describe(const QString& resource) const
{
    const std::string name = toEngineText(resource);
    return fromEngineText(m_plans.describe(&name));
}

DropPlan PlanQuery::dropOf(const QString& resource, int site) const
{
    DropPlan plan;
    plan.resource = resource;
    plan.site = site;
    if (mayPlace(resource, site, &plan.refusal)) {
        plan.kind = DropPlan::Kind::Place;
        plan.placements = placementsOf(resource, site);
        plan.command = commandtexts::place(resource, QString::number(site));
    } else {
        plan.kind = DropPlan::Kind::Refused;
        planSwap(plan);
    }
    return plan;
}

void PlanQuery::planSwap(DropPlan& plan) const
{
    const int site = siteOf(plan.resource);
    const QString other = occupant(plan.site);
    if (site < 0 || other.isEmpty() || other == plan.resource)
        return;
    QString refusal;
    if (maySwap(plan.resource, other, &refusal)) {
        plan.kind = DropPlan::Kind::Swap;
        plan.other = other;
        plan.placements = {{toEngineText(plan.resource), plan.site}, {toEngineText(other), site}};
        plan.command = commandtexts::swap(plan.resource, other);
        plan.refusal.clear();
    } else if (!refusal.isEmpty()) {
        plan.refusal = refusal;
    }
}

} // namespace mirn::zelchipview
