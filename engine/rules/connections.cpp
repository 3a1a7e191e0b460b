// SPDX-License-Identifier: MIT
#include "engine/rules/connections.h"

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/rules/placementrules.h"
#include "engine/rules/settingstore.h"

#include <QMap>
#include <QPair>
#include <QSet>

#include <algorithm>
#include <utility>

namespace mirn::zelengine {

namespace {

// Collects the connections of a design, kind by kind.
class ConnectionFinder
{
public:
    ConnectionFinder(const Device& device, const Design& design, const SettingStore& settings)
        : m_device(device)
        , m_design(design)
        , m_settings(settings)
        , m_rules(device, design)
    { }

    [[nodiscard]] std::vector<Connection> find()
    {
        for (int index : m_design.all()) {
            const Resource& resource = m_design.resource(index);
            if (resource.isSource())
                addSource(index);
            if (resource.isIp())
                addIp(index);
            if (isAgreeing(index))
                addBankOf(*m_device.site(resource.site), resource.type);
            for (const Link& link : m_design.linksOf(index)) {
                if (link.isFirst)
                    addLink(index, link);
            }
        }
        return std::move(m_found);
    }

    [[nodiscard]] std::vector<Connection> findOf(int index)
    {
        const Resource& resource = m_design.resource(index);
        const int ip = m_design.ipOfPart(index);
        if (resource.isSource())
            addSource(index);
        if (ip >= 0)
            addPart(index, ip);
        if (isAgreeing(index))
            addPairs(Kind::OneGroup, index, membersOf(m_device.site(resource.site)->group, resource.type));
        for (const Link& link : m_design.linksOf(index))
            addLink(index, link);
        return std::move(m_found);
    }

private:
    using Kind = Connection::Kind;

    [[nodiscard]] bool isAgreeing(int index) const
    {
        const Resource& resource = m_design.resource(index);
        return resource.site >= 0 && resource.type && !resource.type->agreesOn.isEmpty();
    }

    void addPart(int part, int ip)
    {
        for (int source : m_design.sourcesOf(ip))
            add(Kind::Feeds, source, part);
        addPairs(Kind::Together, part, m_design.partsOf(ip));
    }

    void addPairs(Kind kind, int member, const std::vector<int>& members)
    {
        for (int other : members) {
            if (other != member)
                add(kind, member, other);
        }
    }

    void addSource(int source)
    {
        for (int ip : m_design.fedBy(source)) {
            for (int part : m_design.partsOf(ip))
                add(Kind::Feeds, source, part);
        }
    }

    void addLink(int index, const Link& link)
    {
        const Kind kind = link.rule == Link::Rule::Reachable ? Kind::Feeds : Kind::Together;
        link.isFirst ? add(kind, index, link.other) : add(kind, link.other, index);
    }

    void addIp(int ip)
    {
        std::vector<int> placed;
        std::vector<int> unplaced;
        for (int part : m_design.partsOf(ip))
            (m_design.resource(part).site < 0 ? unplaced : placed).push_back(part);
        addChain(Kind::Together, placed,
            [this](int part) { return m_device.site(m_design.resource(part).site)->unitName(); });
        for (std::size_t n = 0; n < unplaced.size(); ++n) {
            if (n > 0 || !placed.empty())
                add(Kind::Together, placed.empty() ? unplaced[n - 1] : placed.front(), unplaced[n]);
        }
    }

    void addBankOf(const Site& site, const ResourceType* type)
    {
        if (site.group.isEmpty() || m_banks.contains({type, site.group}))
            return;
        m_banks.insert({type, site.group});
        addChain(Kind::OneGroup, membersOf(site.group, type),
            [this](int member) { return m_design.resource(member).statement(); });
    }

    [[nodiscard]] std::vector<int> membersOf(const QString& bank, const ResourceType* type) const
    {
        std::vector<int> members;
        for (const Site* site : bank.isEmpty() ? std::vector<const Site*>() : m_device.sitesOfGroup(bank)) {
            const int occupant = m_design.occupant(site->id);
            if (occupant >= 0 && m_design.resource(occupant).type == type)
                members.push_back(occupant);
        }
        return members;
    }

    // Members of one class, the unit or what they state, never exclude each other.
    template <typename Class> void addChain(Kind kind, const std::vector<int>& members, Class classOf)
    {
        QSet<QPair<QString, QString>> broken;
        for (std::size_t n = 1; n < members.size(); ++n) {
            if (add(kind, members[n - 1], members[n]))
                broken.insert(inOrder(classOf(members[n - 1]), classOf(members[n])));
        }
        QMap<QString, int> firsts;
        for (int member : members) {
            const QString ownClass = classOf(member);
            if (firsts.contains(ownClass))
                continue;
            for (auto first = firsts.cbegin(); first != firsts.cend(); ++first) {
                if (!broken.contains(inOrder(first.key(), ownClass))
                    && !m_rules.refusalOfPair(*first, member).isEmpty())
                    add(kind, *first, member);
            }
            firsts.insert(ownClass, member);
        }
    }

    static QPair<QString, QString> inOrder(const QString& one, const QString& other)
    {
        return one < other ? qMakePair(one, other) : qMakePair(other, one);
    }

    // Returns whether the connection breaks a rule.
    bool add(Kind kind, int from, int to)
    {
        const QString rule = m_rules.refusalOfPair(from, to).sentence();
        const QPair<int, int> pair(std::min(from, to), std::max(from, to));
        if (!m_pairs.contains(pair)) {
            m_pairs.insert(pair);
            m_found.push_back({from, to, rule.isEmpty() ? outOfUse(from, to) : rule, kind});
        }
        return !rule.isEmpty();
    }

    [[nodiscard]] QString outOfUse(int from, int to) const
    {
        const QString sentence = m_settings.outOfUse(m_design.resource(from));
        return sentence.isEmpty() ? m_settings.outOfUse(m_design.resource(to)) : sentence;
    }

    const Device& m_device;
    const Design& m_design;
    const SettingStore& m_settings;
    const PlacementRules m_rules;
    QSet<QPair<const ResourceType*, QString>> m_banks; // those that are done
    QSet<QPair<int, int>> m_pairs; // those that are connected
    std::vector<Connection> m_found;
};

} // namespace

std::vector<Connection> connectionsOf(const Device& device, const Design& design, const SettingStore& settings)
{
    return ConnectionFinder(device, design, settings).find();
}

std::vector<Connection> connectionsOf(
    const Device& device, const Design& design, const SettingStore& settings, int resource)
{
    return ConnectionFinder(device, design, settings).findOf(resource);
}

} // namespace mirn::zelengine
