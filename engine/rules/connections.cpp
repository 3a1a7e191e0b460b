// SPDX-License-Identifier: MIT
#include "engine/rules/connections.h"

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/rules/placementrules.h"
#include "engine/rules/settingstore.h"

#include <QMap>
#include <QPair>
#include <QSet>

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
            if (resource.type == ResourceType::ExtRef || resource.type == ResourceType::Pll)
                addClock(index);
            else if (resource.type == ResourceType::Ip)
                addIp(index);
            else if (resource.type == ResourceType::Uvccio && resource.site >= 0)
                addBankOf(*m_device.site(resource.site));
        }
        return std::move(m_found);
    }

    [[nodiscard]] std::vector<Connection> findOf(int index)
    {
        const Resource& resource = m_design.resource(index);
        if (resource.type == ResourceType::ExtRef || resource.type == ResourceType::Pll)
            addClock(index);
        else if (resource.type == ResourceType::DcuChannel && m_design.ipOf(index) >= 0)
            addChannel(index, m_design.ipOf(index));
        else if (resource.type == ResourceType::Uvccio && resource.site >= 0)
            addPairs(index, suppliesOf(m_device.site(resource.site)->group));
        return std::move(m_found);
    }

private:
    void addChannel(int channel, int ip)
    {
        for (int clock : m_design.clocksOf(ip))
            add(clock, channel);
        addPairs(channel, m_design.partsOf(ip, ResourceType::DcuChannel));
    }

    void addPairs(int member, const std::vector<int>& members)
    {
        for (int other : members) {
            if (other != member)
                add(member, other);
        }
    }

    void addClock(int clock)
    {
        for (int ip : m_design.fedBy(clock)) {
            for (int channel : m_design.partsOf(ip, ResourceType::DcuChannel))
                add(clock, channel);
        }
    }

    void addIp(int ip)
    {
        std::vector<int> placed;
        std::vector<int> unplaced;
        for (int channel : m_design.partsOf(ip, ResourceType::DcuChannel))
            (m_design.resource(channel).site < 0 ? unplaced : placed).push_back(channel);
        addChain(placed, [this](int channel) { return m_device.site(m_design.resource(channel).site)->group; });
        for (std::size_t n = 0; n < unplaced.size(); ++n) {
            if (n > 0 || !placed.empty())
                add(placed.empty() ? unplaced[n - 1] : placed.front(), unplaced[n]);
        }
    }

    void addBankOf(const Site& site)
    {
        if (site.group.isEmpty() || m_banks.contains(site.group))
            return;
        m_banks.insert(site.group);
        addChain(suppliesOf(site.group), [this](int supply) { return m_design.resource(supply).voltage; });
    }

    [[nodiscard]] std::vector<int> suppliesOf(const QString& bank) const
    {
        std::vector<int> supplies;
        for (const Site* site : bank.isEmpty() ? std::vector<const Site*>() : m_device.sitesOfGroup(bank)) {
            const int occupant = m_design.occupant(site->id);
            if (occupant >= 0 && m_design.resource(occupant).type == ResourceType::Uvccio)
                supplies.push_back(occupant);
        }
        return supplies;
    }

    // Members of one class, the unit or the voltage, never exclude each other.
    template <typename Class> void addChain(const std::vector<int>& members, Class classOf)
    {
        QSet<QPair<QString, QString>> broken;
        for (std::size_t n = 1; n < members.size(); ++n) {
            if (add(members[n - 1], members[n]))
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
                    add(*first, member);
            }
            firsts.insert(ownClass, member);
        }
    }

    static QPair<QString, QString> inOrder(const QString& one, const QString& other)
    {
        return one < other ? qMakePair(one, other) : qMakePair(other, one);
    }

    // Returns whether the connection breaks a rule.
    bool add(int from, int to)
    {
        const QString rule = m_rules.refusalOfPair(from, to).sentence();
        m_found.push_back({from, to, rule.isEmpty() ? outOfUse(from, to) : rule});
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
    QSet<QString> m_banks; // those that are done
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
