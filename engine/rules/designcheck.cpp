// SPDX-License-Identifier: MIT
#include "engine/rules/designcheck.h"

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/rules/placementrules.h"
#include "engine/rules/settingstore.h"

#include <QHash>
#include <QPair>
#include <QSet>

#include <algorithm>
#include <utility>

namespace mirn::zelengine {

namespace {

// Says why no site is left for resources of a type; empty if one is free.
QString shortageOf(const ResourceType* type, const Device& device, const Design& design)
{
    const std::vector<const Site*> sites = device.sitesAccepting(type);
    if (sites.empty())
        return QStringLiteral(", and the device has no site for resources of type %1").arg(type->name);
    const bool isAnyFree = std::any_of(
        sites.begin(), sites.end(), [&design](const Site* site) { return design.occupant(site->id) < 0; });
    return isAnyFree ? QString()
                     : QStringLiteral(", and all sites for resources of type %1 are occupied").arg(type->name);
}

} // namespace

DesignCheck::DesignCheck(const Device& device, const Design& design, const SettingStore& settings)
    : m_device(device)
    , m_design(design)
    , m_settings(settings)
{ }

std::vector<Problem> DesignCheck::problems() const
{
    std::vector<Problem> result;
    findBrokenRules(result);
    findSitesOutOfUse(result);
    findContradictions(result);
    findUnplaced(result);
    return result;
}

// Two placements that exclude each other are one problem, although either of them breaks the rule.
void DesignCheck::findBrokenRules(std::vector<Problem>& problems) const
{
    const PlacementRules rules(m_device, m_design);
    QSet<QPair<int, int>> pairs;
    for (int index : m_design.all()) {
        const Resource& resource = m_design.resource(index);
        const Refusal refusal
            = hasOwnSite(resource.type) && resource.site >= 0 ? rules.refusalOfPresent(index) : Refusal();
        const int other = refusal.other();
        if (refusal.isEmpty() || pairs.contains({other, index}))
            continue;
        pairs.insert({index, other});
        Problem problem{Problem::Severity::Error,
            QStringLiteral("%1 cannot stay on %2: %3")
                .arg(resource.path, m_device.site(resource.site)->name, refusal.sentence()),
            {resource.path}, {resource.site}};
        if (other >= 0) {
            problem.resources.append(m_design.resource(other).path);
            problem.sites.push_back(m_design.resource(other).site);
        }
        problems.push_back(std::move(problem));
    }
}

void DesignCheck::findSitesOutOfUse(std::vector<Problem>& problems) const
{
    for (int index : m_design.all()) {
        const Resource& resource = m_design.resource(index);
        const QString sentence = m_settings.outOfUse(resource);
        if (sentence.isEmpty())
            continue;
        Problem problem{Problem::Severity::Error, sentence, {resource.path}, {resource.site}};
        const Site* carrier = m_settings.carrier(resource.site);
        if (carrier && carrier->id != resource.site)
            problem.sites.push_back(carrier->id);
        problems.push_back(std::move(problem));
    }
}

void DesignCheck::findContradictions(std::vector<Problem>& problems) const
{
    for (const Site& site : m_device.sites()) {
        const QStringList sentences = m_settings.contradictions(site);
        for (const QString& sentence : sentences)
            problems.push_back({Problem::Severity::Error, sentence, {}, {site.id}});
    }
}

void DesignCheck::findUnplaced(std::vector<Problem>& problems) const
{
    QHash<const ResourceType*, QString> shortages;
    for (int index : m_design.all()) {
        const Resource& resource = m_design.resource(index);
        if (!hasOwnSite(resource.type) || resource.site >= 0)
            continue;
        if (!shortages.contains(resource.type))
            shortages.insert(resource.type, shortageOf(resource.type, m_device, m_design));
        problems.push_back({Problem::Severity::Warning,
            QStringLiteral("%1 is not placed%2").arg(resource.path, shortages.value(resource.type)), {resource.path},
            {}});
    }
}

} // namespace mirn::zelengine
