// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/resourcetype.h"
#include "engine/rules/placementrules.h"
#include "engine/search/bitset.h"

#include <QHash>
#include <QString>

#include <vector>

namespace mirn::zelengine {

class Design;
class Device;
class SettingStore;

// What a search regards. It leaves rules out to find out which of them stand against a placement.
struct SearchRules
{
    PlacementRules::Rules placement = PlacementRules::AllRules;
    bool settings = true; // a site that a setting puts out of use takes nothing
};

// Free sites that no rule tells apart: of one unit or bank, for the same types, with the same reach.
struct SiteClass
{
    int unit = 0; // a number for the group
    std::vector<int> reaches; // units
    std::vector<int> sites; // ids
    BitSet accepts; // codes of resource types
};

// A resource that is to be placed.
struct Wanted
{
    int resource = -1;
    ResourceType type = ResourceType::Folder;
    int room = 0; // the classes that the placed resources leave it, as a number for classesFor()
    std::vector<int> related; // the wanted ones, by number, with which a rule connects it
};

// A design and its device as numbers and bits, for a search: the resources that are to be placed, the classes of free
// sites, and which classes two resources may take at the same time. All rules concern one resource or two of them.
// Those that concern one wanted resource and the placed ones come from PlacementRules itself, asked once for each class
// and each sort of resource; the others are here once more, and a test compares both.
class SearchTables final
{
public:
    SearchTables(const Device& device, const Design& design, const SettingStore& settings,
        const std::vector<int>& resources, SearchRules rules = {});

    [[nodiscard]] const std::vector<SiteClass>& classes() const { return m_classes; }
    [[nodiscard]] const std::vector<Wanted>& wanted() const { return m_wanted; }
    [[nodiscard]] const Wanted& wanted(int number) const { return m_wanted[static_cast<std::size_t>(number)]; }

    // The classes that a wanted resource may take while no other wanted one is placed.
    [[nodiscard]] const BitSet& classesFor(int number) const
    {
        return m_rooms[static_cast<std::size_t>(wanted(number).room)];
    }
    // The classes that the rules leave to a related resource while `number` is in a class.
    [[nodiscard]] const BitSet& classesBeside(int number, int siteClass, int related) const;

private:
    void addClasses(const SettingStore& settings, bool regardsSettings);
    void addUnits();
    void addWanted(const std::vector<int>& resources, PlacementRules::Rules rules);
    void relate(PlacementRules::Rules rules);
    void relateTo(const std::vector<int>& channels, const std::vector<int>& clocks, PlacementRules::Rules rules);
    void relateSupplies();
    void connect(int number, int other);
    [[nodiscard]] int unitOf(const QString& group);
    [[nodiscard]] BitSet roomOf(int resource, const PlacementRules& rules) const;
    [[nodiscard]] QString sortOf(int resource) const;
    [[nodiscard]] QString sortOfClock(int clock) const;
    [[nodiscard]] QString sitesOf(const std::vector<int>& resources) const;
    template <typename Predicate> const BitSet& filled(BitSet& set, const Predicate& predicate) const;

    const Device& m_device; // both are used by the constructor only
    const Design& m_design;
    QHash<QString, int> m_units;
    int m_noUnit = -1; // the unit of sites without a group, if there are any
    std::vector<std::vector<int>> m_neighbours; // by unit; without the unit itself
    std::vector<SiteClass> m_classes;
    std::vector<Wanted> m_wanted;
    std::vector<BitSet> m_rooms;
    // Made when they are first asked for: by unit, and the third by class.
    mutable std::vector<BitSet> m_near;
    mutable std::vector<BitSet> m_reaching;
    mutable std::vector<BitSet> m_reached;
    mutable std::vector<BitSet> m_elsewhere;
};

} // namespace mirn::zelengine
