// SPDX-License-Identifier: MIT
#include "engine/search/searchtables.h"

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/rules/settingstore.h"

#include <QMap>
#include <QPair>

#include <algorithm>
#include <utility>

namespace mirn::zelengine {

namespace {

constexpr int TypeCodes = 5;

std::size_t at(int index)
{
    return static_cast<std::size_t>(index);
}

bool has(const std::vector<int>& list, int value)
{
    return std::find(list.begin(), list.end(), value) != list.end();
}

BitSet acceptedTypes(const Device& device, const Site& site)
{
    BitSet result(TypeCodes);
    for (ResourceType type : device.kindOf(site).accepts) {
        if (type != ResourceType::Folder)
            result.insert(static_cast<int>(type));
    }
    return result;
}

QString joined(const std::vector<int>& numbers)
{
    QStringList texts;
    for (int number : numbers)
        texts.append(QString::number(number));
    return texts.join(QLatin1Char(' '));
}

} // namespace

SearchTables::SearchTables(const Device& device, const Design& design, const SettingStore& settings,
    const std::vector<int>& resources, SearchRules rules)
    : m_device(device)
    , m_design(design)
{
    addClasses(settings, rules.settings);
    addUnits();
    addWanted(resources, rules.placement);
    relate(rules.placement);
    m_near.resize(m_neighbours.size());
    m_reaching.resize(m_neighbours.size());
    m_elsewhere.resize(m_neighbours.size());
    m_reached.resize(m_classes.size());
}

int SearchTables::unitOf(const QString& group)
{
    const auto known = m_units.constFind(group);
    if (known != m_units.constEnd())
        return *known;
    const int unit = static_cast<int>(m_units.size());
    m_units.insert(group, unit);
    return unit;
}

void SearchTables::addClasses(const SettingStore& settings, bool regardsSettings)
{
    QHash<QPair<QString, QString>, int> known; // by group, and by types and reach
    for (const Site& site : m_device.sites()) {
        const BitSet accepts = acceptedTypes(m_device, site);
        const bool isOutOfUse
            = regardsSettings && !site.disabledBy.isEmpty() && !settings.disablingSetting(site).isEmpty();
        if (accepts.isEmpty() || isOutOfUse || m_design.occupant(site.id) >= 0)
            continue;
        const QString rest = joined(accepts.values()) + QLatin1Char('\n') + site.reaches.join(QLatin1Char('\n'));
        const QPair<QString, QString> key(site.group, rest);
        if (!known.contains(key)) {
            known.insert(key, static_cast<int>(m_classes.size()));
            m_classes.push_back({unitOf(site.group), {}, {}, accepts});
            for (const QString& reached : site.reaches)
                m_classes.back().reaches.push_back(unitOf(reached));
        }
        m_classes[at(known.value(key))].sites.push_back(site.id);
    }
}

// A site without a group names neighbours of nothing.
void SearchTables::addUnits()
{
    std::vector<QPair<int, int>> pairs;
    for (const Site& site : m_device.sites()) {
        for (const QString& neighbour : site.neighbours) {
            if (!site.group.isEmpty())
                pairs.push_back({unitOf(site.group), unitOf(neighbour)});
        }
    }
    m_noUnit = m_units.value(QString(), -1);
    m_neighbours.resize(at(static_cast<int>(m_units.size())));
    for (const auto& [unit, neighbour] : pairs) {
        m_neighbours[at(unit)].push_back(neighbour);
        m_neighbours[at(neighbour)].push_back(unit);
    }
}

void SearchTables::addWanted(const std::vector<int>& resources, PlacementRules::Rules rules)
{
    const PlacementRules asked(m_device, m_design, rules);
    QHash<QString, int> rooms; // by sort
    for (int resource : resources) {
        const QString sort = sortOf(resource);
        if (!rooms.contains(sort)) {
            rooms.insert(sort, static_cast<int>(m_rooms.size()));
            m_rooms.push_back(roomOf(resource, asked));
        }
        m_wanted.push_back({resource, m_design.resource(resource).type, rooms.value(sort), {}});
    }
}

// Resources of one sort are refused by the same sites: what matters is where those are placed that a rule connects with
// them.
QString SearchTables::sortOf(int index) const
{
    const Resource& resource = m_design.resource(index);
    const QString type = QString::number(static_cast<int>(resource.type)) + QLatin1Char(' ');
    const int ip = m_design.ipOf(index);
    switch (resource.type) {
    case ResourceType::DcuChannel:
        return ip < 0 ? type
                      : type + sitesOf(m_design.partsOf(ip, ResourceType::DcuChannel)) + QLatin1Char(':')
                + sitesOf(m_design.clocksOf(ip));
    case ResourceType::ExtRef:
    case ResourceType::Pll:
        return type + sortOfClock(index);
    case ResourceType::Uvccio:
    case ResourceType::Ip:
    case ResourceType::Folder:
        break;
    }
    return type + resource.voltage;
}

QString SearchTables::sortOfClock(int clock) const
{
    const std::vector<int> ips = m_design.fedBy(clock);
    QString result
        = QLatin1String(m_design.isFeeder(clock) ? "feeder " : "") + QLatin1String(ips.empty() ? "" : "feeds ");
    for (int ip : ips)
        result += sitesOf(m_design.partsOf(ip, ResourceType::DcuChannel));
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

BitSet SearchTables::roomOf(int resource, const PlacementRules& rules) const
{
    BitSet result(static_cast<int>(m_classes.size()));
    const int type = static_cast<int>(m_design.resource(resource).type);
    for (std::size_t index = 0; index < m_classes.size(); ++index) {
        const SiteClass& candidate = m_classes[index];
        if (candidate.accepts.contains(type) && rules.propose(resource, candidate.sites.front()).isAllowed())
            result.insert(static_cast<int>(index));
    }
    return result;
}

void SearchTables::relate(PlacementRules::Rules rules)
{
    QMap<int, std::vector<int>> channels; // by IP, here and below
    QMap<int, std::vector<int>> clocks;
    for (int number = 0; number < static_cast<int>(m_wanted.size()); ++number) {
        const Wanted& each = wanted(number);
        if (each.type == ResourceType::DcuChannel && m_design.ipOf(each.resource) >= 0)
            channels[m_design.ipOf(each.resource)].push_back(number);
        if (each.type != ResourceType::ExtRef && each.type != ResourceType::Pll)
            continue;
        for (int ip : m_design.fedBy(each.resource))
            clocks[ip].push_back(number);
    }
    for (auto it = channels.cbegin(); it != channels.cend(); ++it)
        relateTo(it.value(), clocks.value(it.key()), rules);
    if (rules.testFlag(PlacementRules::Voltages))
        relateSupplies();
}

void SearchTables::relateTo(
    const std::vector<int>& channels, const std::vector<int>& clocks, PlacementRules::Rules rules)
{
    for (int channel : channels) {
        for (int other : channels) {
            if (channel < other && rules.testFlag(PlacementRules::ChannelsTogether))
                connect(channel, other);
        }
        for (int clock : clocks) {
            if (rules.testFlag(PlacementRules::Reach) && !has(wanted(clock).related, channel))
                connect(channel, clock);
        }
    }
}

void SearchTables::relateSupplies()
{
    std::vector<int> supplies;
    for (int number = 0; number < static_cast<int>(m_wanted.size()); ++number) {
        const Resource& resource = m_design.resource(wanted(number).resource);
        if (resource.type != ResourceType::Uvccio || resource.voltage.isEmpty())
            continue;
        for (int other : supplies) {
            if (m_design.resource(wanted(other).resource).voltage != resource.voltage)
                connect(number, other);
        }
        supplies.push_back(number);
    }
}

void SearchTables::connect(int number, int other)
{
    m_wanted[at(number)].related.push_back(other);
    m_wanted[at(other)].related.push_back(number);
}

// Fills a set that has not been made with the classes for which the predicate holds.
template <typename Predicate> const BitSet& SearchTables::filled(BitSet& set, const Predicate& predicate) const
{
    if (!set.words().empty())
        return set;
    set = BitSet(static_cast<int>(m_classes.size()));
    for (std::size_t index = 0; index < m_classes.size(); ++index) {
        if (predicate(m_classes[index]))
            set.insert(static_cast<int>(index));
    }
    return set;
}

const BitSet& SearchTables::classesBeside(int number, int siteClass, int related) const
{
    const SiteClass& present = m_classes[at(siteClass)];
    const int unit = present.unit;
    const bool isChannel = wanted(number).type == ResourceType::DcuChannel;
    if (wanted(number).type == ResourceType::Uvccio) {
        const bool isBank = unit != m_noUnit; // sites without a group share no supply
        return filled(m_elsewhere[at(unit)], [&](const SiteClass& each) { return !isBank || each.unit != unit; });
    }
    if (!isChannel)
        return filled(m_reached[at(siteClass)], [&](const SiteClass& each) { return has(present.reaches, each.unit); });
    if (wanted(related).type == ResourceType::DcuChannel)
        return filled(m_near[at(unit)],
            [&](const SiteClass& each) { return each.unit == unit || has(m_neighbours[at(unit)], each.unit); });
    return filled(m_reaching[at(unit)], [&](const SiteClass& each) { return has(each.reaches, unit); });
}

} // namespace mirn::zelengine
