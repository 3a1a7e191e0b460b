// SPDX-License-Identifier: MIT
#include "engine/search/searchtables.h"

#include "engine/model/design.h"
#include "engine/model/device.h"

#include <algorithm>
#include <numeric>
#include <utility>

namespace mirn::zelengine {

namespace {

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

bool has(const std::vector<int>& list, int value)
{
    return std::find(list.begin(), list.end(), value) != list.end();
}

} // namespace

SearchTables::SearchTables(const Device& device, const Design& design, const SettingStore& settings,
    const std::vector<int>& resources, const SearchRules& rules, const Clock& mayGoOn)
    : m_device(device)
    , m_design(design)
    , m_sites(device, design, settings, rules.settings)
    , m_rules(rules.groups)
    , m_areUnitsShared(rules.placement.testFlag(PairRules::SameUnit))
{
    addGroups();
    addWanted(resources, rules.placement, mayGoOn);
    addRelations(rules.placement);
    m_near.resize(at(m_sites.unitCount()));
    m_reaching.resize(at(m_sites.unitCount()));
    m_reached.resize(classes().size());
}

// Notes what was placed before.
void SearchTables::addGroups()
{
    m_labels.resize(m_rules.size());
    m_placedLabels.resize(m_rules.size());
    for (std::size_t rule = 0; rule < m_rules.size(); ++rule) {
        m_most.emplace_back(at(m_sites.unitCount()), m_rules[rule].most);
        const bool isFull = m_rules[rule].kind == GroupRule::Kind::AtMost && m_rules[rule].most <= 0;
        for (int unit = 0; isFull && unit < m_sites.unitCount(); ++unit)
            m_placedLabels[rule].insert(unit, {}); // full from the start
    }
    for (auto it = m_design.occupants().cbegin(); it != m_design.occupants().cend(); ++it) {
        const Site* site = m_device.site(it.key());
        const int unit = site ? m_sites.unit(site->group) : -1;
        if (unit < 0 || !m_sites.isGroup(unit))
            continue;
        for (int rule = 0; rule < static_cast<int>(m_rules.size()); ++rule) {
            const int label = labelOf(rule, m_design.resource(it.value()));
            if (label < 0)
                continue;
            --m_most[at(rule)][at(unit)];
            m_placedLabels[at(rule)][unit].push_back(label);
        }
    }
}

int SearchTables::labelOf(int rule, const Resource& resource)
{
    const GroupRule& asked = m_rules[at(rule)];
    if (!asked.concerns(resource))
        return -1;
    const QString text = asked.kind == GroupRule::Kind::Agree ? asked.textOf(resource) : QString();
    QHash<QString, int>& labels = m_labels[at(rule)];
    if (!labels.contains(text))
        labels.insert(text, static_cast<int>(labels.size()));
    return labels.value(text);
}

// Asking the rules about every class takes long, once for each lot that they refuse alike.
void SearchTables::addWanted(const std::vector<int>& resources, PairRules::Rules rules, const Clock& mayGoOn)
{
    const PlacementRules asked(m_device, m_design, rules);
    for (int resource : resources) {
        const QString likes = likesOf(resource);
        if (!m_rooms.contains(likes))
            m_rooms.insert(likes, roomOf(resource, asked, mayGoOn));
        if (mayGoOn && !mayGoOn()) { // the last room may be incomplete as well
            m_isComplete = false;
            return;
        }
        const QString name = likes + QLatin1Char('\n') + identityOf(resource);
        if (!m_sortsByName.contains(name)) {
            m_sortsByName.insert(name, static_cast<int>(m_sorts.size()));
            addSort(resource, likes);
        }
        const int sort = m_sortsByName.value(name);
        m_sorts[at(sort)].members.push_back(static_cast<int>(m_wanted.size()));
        m_wanted.push_back({resource, m_design.resource(resource).type, sort});
    }
}

void SearchTables::addSort(int resource, const QString& likes)
{
    Sort sort;
    sort.type = m_design.resource(resource).type;
    for (int rule = 0; rule < static_cast<int>(m_rules.size()); ++rule)
        sort.labels.push_back(labelOf(rule, m_design.resource(resource)));
    sort.room = m_rooms.value(likes);
    closeGroups(sort);
    m_sorts.push_back(std::move(sort));
}

// Takes away the units in which the placed ones leave no place.
void SearchTables::closeGroups(Sort& sort) const
{
    for (std::size_t rule = 0; rule < m_rules.size(); ++rule) {
        const int label = sort.labels[rule];
        for (auto it = m_placedLabels[rule].cbegin(); label >= 0 && it != m_placedLabels[rule].cend(); ++it) {
            if (!m_sites.isGroup(it.key()))
                continue;
            const bool isClosed = m_rules[rule].kind == GroupRule::Kind::AtMost
                ? m_most[rule][at(it.key())] <= 0
                : std::any_of(it->begin(), it->end(), [label](int other) { return other != label; });
            for (std::size_t index = 0; isClosed && index < m_sites.classesOf(it.key()).size(); ++index)
                sort.room.remove(m_sites.classesOf(it.key())[index]);
        }
    }
}

// Resources that are alike are refused by the same sites: what matters is where those are placed that a rule connects
// with them.
QString SearchTables::likesOf(int index)
{
    const Resource& resource = m_design.resource(index);
    QString result = QString::number(resource.type->number) + QLatin1Char(' ');
    if (resource.isSource())
        result += likesOfSource(index);
    const int ip = m_design.ipOfPart(index);
    if (ip >= 0 && !m_likesOfIps.contains(ip))
        m_likesOfIps.insert(ip, sitesOf(m_design.partsOf(ip)) + QLatin1Char(':') + sitesOf(m_design.sourcesOf(ip)));
    result += m_likesOfIps.value(ip);
    for (const Link& link : m_design.linksOf(index)) {
        const int site = m_design.resource(link.other).site;
        if (link.rule != Link::Rule::Near && site >= 0)
            result += QStringLiteral(" %1/%2/%3").arg(static_cast<int>(link.rule)).arg(int(link.isFirst)).arg(site);
    }
    return result;
}

QString SearchTables::likesOfSource(int source) const
{
    const std::vector<int> ips = m_design.fedBy(source);
    QString result
        = QLatin1String(m_design.isFeeder(source) ? "feeder " : "") + QLatin1String(ips.empty() ? "" : "feeds ");
    for (int ip : ips)
        result += sitesOf(m_design.partsOf(ip));
    return result;
}

// What else tells a resource from others: the wanted ones with which rules connect it, and its texts.
QString SearchTables::identityOf(int index) const
{
    const Resource& resource = m_design.resource(index);
    QString result;
    if (resource.isSource()) {
        for (int ip : m_design.fedBy(index))
            result += QString::number(ip) + QLatin1Char(' ');
    }
    result += QLatin1Char(':') + QString::number(m_design.ipOfPart(index));
    if (isBound(index)) // what is linked is one of a kind
        result += QLatin1Char('#') + QString::number(index);
    for (const GroupRule& rule : m_rules) {
        const bool hasText = rule.kind == GroupRule::Kind::Agree && rule.concerns(resource);
        result += QLatin1Char('\n') + (hasText ? rule.textOf(resource) : QString());
    }
    return result;
}

QString SearchTables::sitesOf(const std::vector<int>& resources) const
{
    QString result;
    for (int resource : resources) {
        const int site = m_design.resource(resource).site;
        if (site >= 0)
            result += QString::number(site) + QLatin1Char(' ');
    }
    return result;
}

BitSet SearchTables::roomOf(int resource, const PlacementRules& rules, const Clock& mayGoOn) const
{
    BitSet result = m_sites.none();
    const int type = m_design.resource(resource).type->number;
    for (int siteClass : candidatesFor(resource)) {
        const SiteClass& candidate = m_sites.at(siteClass);
        if (mayGoOn && !mayGoOn())
            break;
        if (candidate.accepts.contains(type) && rules.propose(resource, candidate.sites.front()).isAllowed())
            result.insert(siteClass);
    }
    return result;
}

// All classes, or those near to a placed part of the same IP, because the rules would refuse each of the others.
std::vector<int> SearchTables::candidatesFor(int resource) const
{
    const bool staysNear = m_areUnitsShared && m_design.resource(resource).type->sharesUnit;
    const int ip = staysNear ? m_design.ipOfPart(resource) : -1;
    for (int part : ip < 0 ? std::vector<int>() : m_design.partsOf(ip)) {
        const Site* site = m_device.site(m_design.resource(part).site);
        const int unit = site ? m_sites.unit(site->group) : -1;
        if (unit < 0 || !m_sites.isGroup(unit))
            continue;
        std::vector<int> result = m_sites.classesOf(unit);
        for (int neighbour : m_sites.neighbours(unit)) {
            const std::vector<int>& beside = m_sites.classesOf(neighbour);
            result.insert(result.end(), beside.begin(), beside.end());
        }
        return result;
    }
    std::vector<int> result(classes().size());
    std::iota(result.begin(), result.end(), 0);
    return result;
}

void SearchTables::addRelations(PairRules::Rules rules)
{
    relateParts(rules);
    relateLinks(rules);
}

// Connects the parts of each IP with one another and with the sources that serve it.
void SearchTables::relateParts(PairRules::Rules rules)
{
    QHash<int, std::vector<int>> parts; // by IP
    for (int sort = 0; sort < static_cast<int>(m_sorts.size()); ++sort) {
        const int ip = m_design.ipOfPart(firstOf(sort));
        if (ip < 0)
            continue;
        parts[ip].push_back(sort);
        for (int other : parts.value(ip)) {
            if (rules.testFlag(PairRules::SameUnit) && m_sorts[at(sort)].type->sharesUnit)
                connect(sort, other, Relation::Kind::SameUnit);
        }
    }
    for (int sort = 0; sort < static_cast<int>(m_sorts.size()) && rules.testFlag(PairRules::Reach); ++sort) {
        const ResourceType& type = *m_sorts[at(sort)].type;
        if (!type.feeds || !type.mustReach)
            continue;
        for (int ip : m_design.fedBy(firstOf(sort))) {
            for (int other : parts.value(ip))
                connect(sort, other, Relation::Kind::Reaches);
        }
    }
}

void SearchTables::relateLinks(PairRules::Rules rules)
{
    QHash<int, int> sorts; // of what is linked, by resource
    for (int sort = 0; sort < static_cast<int>(m_sorts.size()); ++sort) {
        if (isBound(firstOf(sort)))
            sorts.insert(firstOf(sort), sort);
    }
    for (auto it = sorts.cbegin(); it != sorts.cend(); ++it) {
        for (const Link& link : m_design.linksOf(it.key())) {
            if (!link.isFirst || !sorts.contains(link.other))
                continue;
            if (link.rule == Link::Rule::SameUnit && rules.testFlag(PairRules::SameUnit))
                connect(it.value(), sorts.value(link.other), Relation::Kind::SameUnit);
            else if (link.rule == Link::Rule::Reachable && rules.testFlag(PairRules::Reach))
                connect(it.value(), sorts.value(link.other), Relation::Kind::Reaches);
        }
    }
}

bool SearchTables::isBound(int resource) const
{
    const std::vector<Link> links = m_design.linksOf(resource);
    return std::any_of(links.begin(), links.end(), [](const Link& link) { return link.rule != Link::Rule::Near; });
}

int SearchTables::firstOf(int sort) const
{
    return wanted(m_sorts[at(sort)].members.front()).resource;
}

void SearchTables::connect(int sort, int other, Relation::Kind kind)
{
    std::vector<Relation>& related = m_sorts[at(sort)].related;
    const auto isKnown = [&](const Relation& each) { return each.sort == other && each.kind == kind; };
    if (std::any_of(related.begin(), related.end(), isKnown))
        return;
    related.push_back({other, kind});
    if (other != sort)
        m_sorts[at(other)].related.push_back({sort, Relation::reversed(kind)});
}

bool SearchTables::isTogether(int index) const
{
    const std::vector<Relation>& related = sort(index).related;
    return std::any_of(related.begin(), related.end(), [index](const Relation& each) { return each.sort == index; });
}

// Fills a set that has not been made with the classes for which the predicate holds.
template <typename Predicate> const BitSet& SearchTables::filled(BitSet& set, const Predicate& predicate) const
{
    if (!set.words().empty())
        return set;
    set = m_sites.none();
    for (std::size_t index = 0; index < classes().size(); ++index) {
        if (predicate(classes()[index]))
            set.insert(static_cast<int>(index));
    }
    return set;
}

const BitSet& SearchTables::classesBeside(int siteClass, Relation::Kind kind) const
{
    const SiteClass& present = m_sites.at(siteClass);
    const int unit = present.unit;
    switch (kind) {
    case Relation::Kind::Reaches:
        return filled(m_reached[at(siteClass)], [&](const SiteClass& each) { return has(present.reaches, each.unit); });
    case Relation::Kind::IsReached:
        return filled(m_reaching[at(unit)], [&](const SiteClass& each) { return has(each.reaches, unit); });
    case Relation::Kind::SameUnit:
        break;
    }
    return filled(m_near[at(unit)], [&](const SiteClass& each) {
        return m_sites.isGroup(unit) && (each.unit == unit || has(m_sites.neighbours(unit), each.unit));
    });
}

} // namespace mirn::zelengine
