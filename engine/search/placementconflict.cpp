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

constexpr std::pair<PairRules::Rule, const char*> RuleSentences[] = {
    {PairRules::SameUnit, "what belongs together shares one unit or neighbouring ones"},
    {PairRules::Reach, "a source has to reach every unit that it serves"},
    {PairRules::NoIdleSources, "a site inside a unit takes no source that feeds nothing"},
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
    for (const GroupRule& rule : rules.groups)
        result.append(rule.sentence);
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

ConflictReader::ConflictReader(
    const Device& device, const Design& design, const SettingStore& settings, SearchRules rules)
    : m_device(device)
    , m_design(design)
    , m_settings(settings)
    , m_rules(std::move(rules))
{ }

PlacementConflict ConflictReader::narrowed(std::vector<int> resources, const Clock& mayGoOn) const
{
    PlacementConflict conflict{fewerResources(std::move(resources), mayGoOn), m_rules};
    const auto leaveOut = [&](const auto& change) {
        SearchRules without = conflict.rules;
        change(without);
        const bool isNeeded = !isImpossible(conflict.resources, without, mayGoOn);
        if (!isNeeded)
            conflict.rules = without;
        return !isNeeded;
    };
    for (const auto& [rule, text] : RuleSentences)
        leaveOut([flag = rule](SearchRules& rules) { rules.placement.setFlag(flag, false); });
    for (std::size_t index = 0; index < conflict.rules.groups.size();) {
        if (!leaveOut(
                [index](SearchRules& rules) { rules.groups.erase(rules.groups.begin() + static_cast<int>(index)); }))
            ++index;
    }
    leaveOut([](SearchRules& rules) { rules.settings = false; });
    return conflict;
}

bool ConflictReader::isImpossible(
    const std::vector<int>& resources, const SearchRules& rules, const Clock& mayGoOn) const
{
    if (!mayGoOn())
        return false;
    const SearchTables tables(m_device, m_design, m_settings, resources, rules, mayGoOn);
    return tables.isComplete() && !provenCore(tables, allNumbers(tables), mayGoOn).empty();
}

std::vector<int> ConflictReader::fewerResources(std::vector<int> resources, const Clock& mayGoOn) const
{
    if (resources.size() > MostNarrowed)
        return resources;
    const SearchTables tables(m_device, m_design, m_settings, resources, m_rules, mayGoOn);
    if (!tables.isComplete())
        return resources;
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
    const Resource& one = m_design.resource(resource);
    const std::vector<const Site*> sites = m_device.sitesAccepting(one.type);
    const QString type = nameOf(one.type);
    if (sites.empty())
        return QStringLiteral("%1 cannot be placed: the device has no site for resources of type %2")
            .arg(one.path, type);
    QStringList refusals;
    for (const Site* site : sites) {
        const QString setting = m_settings.disablingSetting(*site);
        if (m_design.occupant(site->id) >= 0)
            continue;
        const QString refusal = refusalOf(resource, *site, rules).sentence();
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

Refusal ConflictReader::refusalOf(int resource, const Site& site, const SearchRules& rules) const
{
    return PlacementRules(m_device, m_design, rules.asked()).propose(resource, site.id).refusal;
}

// Resources of one sort have the same reasons against them.
std::vector<int> ConflictReader::placedReasons(const PlacementConflict& conflict, const Clock& mayGoOn) const
{
    std::vector<int> result;
    const SearchTables tables(m_device, m_design, m_settings, conflict.resources, conflict.rules, mayGoOn);
    for (const Sort& sort : tables.sorts()) {
        for (const Site* site : m_device.sitesAccepting(sort.type)) {
            if (!mayGoOn())
                return result;
            if (m_design.occupant(site->id) >= 0)
                continue;
            const int other = refusalOf(tables.wanted(sort.members.front()).resource, *site, conflict.rules).other();
            if (other >= 0 && std::find(result.begin(), result.end(), other) == result.end())
                result.push_back(other);
        }
    }
    return result;
}

} // namespace mirn::zelengine
