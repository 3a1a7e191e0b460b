// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/resourcetype.h"
#include "engine/rules/placementrules.h"
#include "engine/search/bitset.h"
#include "engine/search/searchrules.h"
#include "engine/search/siteclasses.h"

#include <QHash>
#include <QMap>
#include <QString>

#include <functional>
#include <vector>

namespace mirn::zelengine {

class Design;
class Device;
class SettingStore;

// A resource that is to be placed.
struct Wanted
{
    int resource = -1;
    const ResourceType* type = nullptr;
    int sort = 0;
};

// A rule that connects the members of a sort with those of another one.
struct Relation
{
    enum class Kind { SameUnit, Reaches, IsReached }; // from the sort that has it to the other one

    int sort = 0;
    Kind kind = Kind::SameUnit;

    // The same rule, as the other sort has it.
    [[nodiscard]] static Kind reversed(Kind kind)
    {
        return kind == Kind::SameUnit ? kind : (kind == Kind::Reaches ? Kind::IsReached : Kind::Reaches);
    }
};

// Wanted resources that no rule tells apart, such as the supplies of one voltage or the channels of one IP.
struct Sort
{
    const ResourceType* type = nullptr;
    std::vector<int> labels; // by group rule: a number for the text, or -1 if the rule does not concern them
    BitSet room; // the classes that they may take while no other wanted resource is placed
    std::vector<int> members; // numbers of wanted ones
    std::vector<Relation> related; // sorts with which a rule connects each member, maybe this one too
};

// A design and its device as numbers and bits, for a search: the resources that are to be placed, the classes of free
// sites, which classes two resources may take at the same time, and the rules for groups of sites. The rules that
// concern one wanted resource and the placed ones come from PlacementRules itself, asked once for each class and each
// kind of resource; the others are here once more, and a test compares both.
class SearchTables final
{
public:
    using Clock = std::function<bool()>; // returns whether there is time left

    // Without time left the tables stay incomplete. An empty clock has time.
    SearchTables(const Device& device, const Design& design, const SettingStore& settings,
        const std::vector<int>& resources, const SearchRules& rules, const Clock& mayGoOn = {});

    [[nodiscard]] bool isComplete() const { return m_isComplete; }
    [[nodiscard]] const SiteClasses& sites() const { return m_sites; }
    [[nodiscard]] const std::vector<SiteClass>& classes() const { return m_sites.all(); }
    [[nodiscard]] const std::vector<Wanted>& wanted() const { return m_wanted; }
    [[nodiscard]] const Wanted& wanted(int number) const { return m_wanted[static_cast<std::size_t>(number)]; }
    [[nodiscard]] const std::vector<Sort>& sorts() const { return m_sorts; }
    [[nodiscard]] const Sort& sort(int index) const { return m_sorts[static_cast<std::size_t>(index)]; }

    // The classes that a wanted resource may take while no other wanted one is placed.
    [[nodiscard]] const BitSet& classesFor(int number) const { return sort(wanted(number).sort).room; }
    // The classes that a rule leaves to those with which it connects a resource in a class.
    [[nodiscard]] const BitSet& classesBeside(int siteClass, Relation::Kind kind) const;

    [[nodiscard]] const std::vector<GroupRule>& rules() const { return m_rules; }
    // How many wanted resources a rule AtMost allows in a unit beside those placed there.
    [[nodiscard]] int mostIn(int rule, int unit) const
    {
        return m_most[static_cast<std::size_t>(rule)][static_cast<std::size_t>(unit)];
    }
    // Whether the members share one unit or neighbouring ones.
    [[nodiscard]] bool isTogether(int sort) const;

private:
    void addGroups();
    void addWanted(const std::vector<int>& resources, PairRules::Rules rules, const Clock& mayGoOn);
    void addSort(int resource, const QString& likes);
    void addRelations(PairRules::Rules rules);
    void relateParts(PairRules::Rules rules);
    void relateLinks(PairRules::Rules rules);
    void connect(int sort, int other, Relation::Kind kind);
    [[nodiscard]] bool isBound(int resource) const;
    [[nodiscard]] int firstOf(int sort) const;
    [[nodiscard]] int labelOf(int rule, const Resource& resource);
    void closeGroups(Sort& sort) const;
    [[nodiscard]] BitSet roomOf(int resource, const PlacementRules& rules, const Clock& mayGoOn) const;
    [[nodiscard]] std::vector<int> candidatesFor(int resource) const;
    [[nodiscard]] QString likesOf(int resource);
    [[nodiscard]] QString likesOfSource(int source) const;
    [[nodiscard]] QString identityOf(int resource) const;
    [[nodiscard]] QString sitesOf(const std::vector<int>& resources) const;
    template <typename Predicate> const BitSet& filled(BitSet& set, const Predicate& predicate) const;

    const Device& m_device; // both are used by the constructor only
    const Design& m_design;
    const SiteClasses m_sites;
    const std::vector<GroupRule> m_rules;
    const bool m_areUnitsShared;
    std::vector<QHash<QString, int>> m_labels; // by rule, here and below
    std::vector<std::vector<int>> m_most; // and by unit
    std::vector<QMap<int, std::vector<int>>> m_placedLabels; // and by unit
    std::vector<Wanted> m_wanted;
    std::vector<Sort> m_sorts;
    QHash<QString, int> m_sortsByName;
    QHash<QString, BitSet> m_rooms; // of resources that are alike
    QHash<int, QString> m_likesOfIps;
    bool m_isComplete = true;
    // Made when they are first asked for: by unit, and the third by class.
    mutable std::vector<BitSet> m_near;
    mutable std::vector<BitSet> m_reaching;
    mutable std::vector<BitSet> m_reached;
};

} // namespace mirn::zelengine
