// SPDX-License-Identifier: MIT
#include "engine/search/placementconflict.h"

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/rules/settingstore.h"
#include "engine/search/classsearch.h"

#include <QStringList>

#include <algorithm>
#include <utility>

namespace mirn::zelengine {

namespace {

constexpr std::size_t MostNarrowed = 64; // resources; leaving out each of more takes too long
constexpr int MostNamed = 4; // resources in a sentence

constexpr std::pair<PlacementRules::Rule, const char*> RuleSentences[] = {
    {PlacementRules::ChannelsTogether, "the channels of one IP share one unit or neighbouring ones"},
    {PlacementRules::Reach, "a clock source has to reach every unit that it serves"},
    {PlacementRules::NoIdleClocks, "a clock site inside a unit takes no source that feeds nothing"},
    {PlacementRules::Voltages, "the supplies of one bank have one voltage"},
};

std::vector<int> allNumbers(const SearchTables& tables)
{
    std::vector<int> result;
    for (std::size_t number = 0; number < tables.wanted().size(); ++number)
        result.push_back(static_cast<int>(number));
    return result;
}

// Returns those of the numbers that cannot be placed together; nothing if all can, or if time runs out.
std::vector<int> provenCore(
    const SearchTables& tables, const std::vector<int>& numbers, const ConflictReader::Clock& mayGoOn)
{
    ClassChooser chooser;
    ClassSearch search(tables, numbers, chooser);
    return search.run([&mayGoOn](int) { return mayGoOn(); }) == ClassSearch::End::Impossible ? search.core()
                                                                                             : std::vector<int>();
}

QStringList ruleSentences(const SearchRules& rules)
{
    QStringList result;
    for (const auto& [rule, text] : RuleSentences) {
        if (rules.placement.testFlag(rule))
            result.append(QString::fromLatin1(text));
    }
    if (rules.settings)
        result.append(QStringLiteral("sites that a setting puts out of use take nothing"));
    return result;
}

QString enumeration(const QStringList& names)
{
    if (names.size() > MostNamed)
        return QStringLiteral("%1 and %2 more")
            .arg(QStringList(names.mid(0, MostNamed - 1)).join(QLatin1String(", ")),
                QString::number(names.size() - MostNamed + 1));
    return names.size() < 2
        ? names.join(QString())
        : QStringLiteral("%1 and %2")
              .arg(QStringList(names.mid(0, names.size() - 1)).join(QLatin1String(", ")), names.last());
}

} // namespace

ConflictReader::ConflictReader(const Device& device, const Design& design, const SettingStore& settings)
    : m_device(device)
    , m_design(design)
    , m_settings(settings)
{ }

PlacementConflict ConflictReader::narrowed(std::vector<int> resources, const Clock& mayGoOn) const
{
    PlacementConflict conflict{fewerResources(std::move(resources), mayGoOn), {}};
    std::vector<SearchRules> fewer;
    const auto isStillImpossible = [&](const SearchRules& rules) {
        const SearchTables tables(m_device, m_design, m_settings, conflict.resources, rules);
        return mayGoOn() && !provenCore(tables, allNumbers(tables), mayGoOn).empty();
    };
    for (const auto& [rule, text] : RuleSentences) {
        SearchRules without = conflict.rules;
        without.placement.setFlag(rule, false);
        if (isStillImpossible(without))
            conflict.rules = without;
    }
    SearchRules without = conflict.rules;
    without.settings = false;
    if (isStillImpossible(without))
        conflict.rules = without;
    return conflict;
}

std::vector<int> ConflictReader::fewerResources(std::vector<int> resources, const Clock& mayGoOn) const
{
    if (resources.size() > MostNarrowed)
        return resources;
    const SearchTables tables(m_device, m_design, m_settings, resources);
    std::vector<int> core = allNumbers(tables);
    for (int number : allNumbers(tables)) {
        std::vector<int> fewer = core;
        fewer.erase(std::remove(fewer.begin(), fewer.end(), number), fewer.end());
        if (fewer.size() == core.size() || !mayGoOn())
            continue;
        const std::vector<int> proven = provenCore(tables, fewer, mayGoOn);
        if (!proven.empty())
            core = proven;
    }
    std::vector<int> result;
    for (int number : core)
        result.push_back(resources[static_cast<std::size_t>(number)]);
    return result;
}

QString ConflictReader::sentence(const PlacementConflict& conflict) const
{
    if (conflict.resources.size() == 1)
        return sentenceForOne(conflict.resources.front(), conflict.rules);
    QStringList names;
    for (int resource : conflict.resources)
        names.append(m_design.resource(resource).path);
    QStringList reasons = ruleSentences(conflict.rules);
    const QString shortage = shortageOf(conflict);
    if (!shortage.isEmpty())
        reasons.prepend(shortage);
    if (reasons.isEmpty())
        reasons.append(QStringLiteral("a site takes one resource"));
    return QStringLiteral("%1 cannot be placed together: %2")
        .arg(enumeration(names), reasons.join(QLatin1String("; ")));
}

// Empty if there are as many sites as resources, and only the rules between these stand against them.
QString ConflictReader::shortageOf(const PlacementConflict& conflict) const
{
    const SearchTables tables(m_device, m_design, m_settings, conflict.resources, conflict.rules);
    BitSet classes(static_cast<int>(tables.classes().size()));
    for (int number : allNumbers(tables))
        classes.add(tables.classesFor(number));
    std::size_t sites = 0;
    classes.forEach([&](int index) { sites += tables.classes()[static_cast<std::size_t>(index)].sites.size(); });
    if (sites >= conflict.resources.size())
        return {};
    return sites == 1 ? QStringLiteral("there is 1 site left for %1 resources").arg(conflict.resources.size())
                      : QStringLiteral("there are %1 sites left for %2 resources")
                            .arg(QString::number(sites), QString::number(conflict.resources.size()));
}

QString ConflictReader::sentenceForOne(int resource, const SearchRules& rules) const
{
    const PlacementRules asked(m_device, m_design, rules.placement);
    const Resource& one = m_design.resource(resource);
    const std::vector<const Site*> sites = m_device.sitesAccepting(one.type);
    const QString type = resourceTypeName(one.type);
    if (sites.empty())
        return QStringLiteral("%1 cannot be placed: the device has no site for resources of type %2")
            .arg(one.path, type);
    QStringList refusals;
    for (const Site* site : sites) {
        const QString setting = m_settings.disablingSetting(*site);
        if (m_design.occupant(site->id) >= 0)
            continue;
        const QString refusal = asked.propose(resource, site->id).refusal.sentence();
        refusals.append(
            !refusal.isEmpty() ? refusal : QStringLiteral("%1 is out of use because %2").arg(site->name, setting));
    }
    if (refusals.isEmpty())
        return QStringLiteral("%1 cannot be placed: all sites for resources of type %2 are occupied")
            .arg(one.path, type);
    if (refusals.size() == 1)
        return QStringLiteral("%1 cannot be placed: %2").arg(one.path, refusals.first());
    return QStringLiteral("%1 cannot be placed: none of the %2 free sites for resources of type %3 takes it; for "
                          "example, %4")
        .arg(one.path, QString::number(refusals.size()), type, refusals.first());
}

std::vector<int> ConflictReader::placedReasons(const PlacementConflict& conflict) const
{
    const PlacementRules asked(m_device, m_design, conflict.rules.placement);
    std::vector<int> result;
    for (int resource : conflict.resources) {
        for (const Site* site : m_device.sitesAccepting(m_design.resource(resource).type)) {
            const int other = m_design.occupant(site->id) < 0 ? asked.propose(resource, site->id).refusal.other() : -1;
            if (other >= 0 && std::find(result.begin(), result.end(), other) == result.end())
                result.push_back(other);
        }
    }
    return result;
}

} // namespace mirn::zelengine
