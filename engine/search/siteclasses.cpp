// SPDX-License-Identifier: MIT
#include "engine/search/siteclasses.h"

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/rules/settingstore.h"

#include <QPair>
#include <QStringList>

namespace mirn::zelengine {

namespace {

BitSet acceptedTypes(const Device& device, const Site& site)
{
    BitSet result(static_cast<int>(device.types().size()));
    for (const ResourceType* type : device.kindOf(site).accepts)
        result.insert(type->number);
    return result;
}

QString joinedNumbers(const std::vector<int>& numbers)
{
    QStringList texts;
    for (int number : numbers)
        texts.append(QString::number(number));
    return texts.join(QLatin1Char(' '));
}

} // namespace

SiteClasses::SiteClasses(const Device& device, const Design& design, const SettingStore& settings, bool regardsSettings)
{
    addClasses(device, design, settings, regardsSettings);
    addUnits(device);
}

int SiteClasses::addedUnit(const QString& group)
{
    const auto known = m_units.constFind(group);
    if (known != m_units.constEnd())
        return *known;
    const int unit = static_cast<int>(m_units.size());
    m_units.insert(group, unit);
    return unit;
}

void SiteClasses::addClasses(
    const Device& device, const Design& design, const SettingStore& settings, bool regardsSettings)
{
    QHash<QPair<QString, QString>, int> known; // by group, and by types and reach
    for (const Site& site : device.sites()) {
        const BitSet accepts = acceptedTypes(device, site);
        const bool isOutOfUse
            = regardsSettings && !site.disabledBy.isEmpty() && !settings.disablingSetting(site).isEmpty();
        if (accepts.isEmpty() || isOutOfUse || design.occupant(site.id) >= 0)
            continue;
        const QString rest = joinedNumbers(accepts.values()) + QLatin1Char('\n') + site.reaches.join(QLatin1Char('\n'));
        const QPair<QString, QString> key(site.group, rest);
        if (!known.contains(key)) {
            known.insert(key, static_cast<int>(m_classes.size()));
            m_classes.push_back({addedUnit(site.group), {}, {}, accepts});
            for (const QString& reached : site.reaches)
                m_classes.back().reaches.push_back(addedUnit(reached));
        }
        m_classes[static_cast<std::size_t>(known.value(key))].sites.push_back(site.id);
    }
}

// A site without a group names neighbours of nothing.
void SiteClasses::addUnits(const Device& device)
{
    std::vector<QPair<int, int>> pairs;
    for (const Site& site : device.sites()) {
        for (const QString& neighbour : site.neighbours) {
            if (!site.group.isEmpty())
                pairs.push_back({addedUnit(site.group), addedUnit(neighbour)});
        }
    }
    m_noUnit = unit(QString());
    m_neighbours.resize(static_cast<std::size_t>(m_units.size()));
    m_classesOfUnits.resize(m_neighbours.size());
    for (const auto& [unit, neighbour] : pairs) {
        m_neighbours[static_cast<std::size_t>(unit)].push_back(neighbour);
        m_neighbours[static_cast<std::size_t>(neighbour)].push_back(unit);
    }
    for (std::size_t index = 0; index < m_classes.size(); ++index)
        m_classesOfUnits[static_cast<std::size_t>(m_classes[index].unit)].push_back(static_cast<int>(index));
}

} // namespace mirn::zelengine
