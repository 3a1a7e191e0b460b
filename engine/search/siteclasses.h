// SPDX-License-Identifier: MIT
#pragma once

#include "engine/search/bitset.h"

#include <QHash>
#include <QString>

#include <vector>

namespace mirn::zelengine {

class Design;
class Device;
class SettingStore;

// Free sites that no rule tells apart: of one unit or bank, for the same types, with the same reach.
struct SiteClass
{
    int unit = 0; // a number for the group
    std::vector<int> reaches; // units
    std::vector<int> sites; // ids
    BitSet accepts; // numbers of resource types
};

// The free sites of a device in classes, and the units that they belong to. All groups are called units here, banks
// too. The classes take numbers in the order of their first sites.
class SiteClasses final
{
public:
    SiteClasses(const Device& device, const Design& design, const SettingStore& settings, bool regardsSettings);

    [[nodiscard]] const std::vector<SiteClass>& all() const { return m_classes; }
    [[nodiscard]] const SiteClass& at(int siteClass) const { return m_classes[static_cast<std::size_t>(siteClass)]; }
    [[nodiscard]] BitSet none() const { return BitSet(static_cast<int>(m_classes.size())); }

    [[nodiscard]] int unitCount() const { return static_cast<int>(m_neighbours.size()); }
    // Returns -1 for a group that no free site belongs to, reaches or has as its neighbour.
    [[nodiscard]] int unit(const QString& group) const { return m_units.value(group, -1); }
    // Whether the sites of a unit form a group; those without a group are in one unit as well.
    [[nodiscard]] bool isGroup(int unit) const { return unit != m_noUnit; }
    // Without the unit itself; one may be there more than once.
    [[nodiscard]] const std::vector<int>& neighbours(int unit) const
    {
        return m_neighbours[static_cast<std::size_t>(unit)];
    }
    [[nodiscard]] const std::vector<int>& classesOf(int unit) const
    {
        return m_classesOfUnits[static_cast<std::size_t>(unit)];
    }

private:
    void addClasses(const Device& device, const Design& design, const SettingStore& settings, bool regardsSettings);
    void addUnits(const Device& device);
    [[nodiscard]] int addedUnit(const QString& group);

    QHash<QString, int> m_units;
    int m_noUnit = -1; // the unit of sites without a group, if there are any
    std::vector<SiteClass> m_classes;
    std::vector<std::vector<int>> m_neighbours; // by unit, here and below
    std::vector<std::vector<int>> m_classesOfUnits;
};

} // namespace mirn::zelengine
