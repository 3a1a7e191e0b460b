// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/rules/placementrules.h"
#include "engine/rules/settingstore.h"
#include "engine/search/grouprule.h"
#include "tests/support/random.h"

// A small random device and a design on it, some of it placed and little of it easy: few units, banks and clock sites,
// and about as many resources as sites. With group rules, some types may be in a group only once or twice. One with
// packed units has more IPs and no clock source outside them.
struct RandomDesign
{
    enum class Sort { Plain, GroupRules, PackedUnits, Links };

    explicit RandomDesign(unsigned int seed, Sort wantedSort = Sort::Plain)
        : sort(wantedSort)
        , random(seed)
        , settings(device)
    {
        describeTypes();
        for (const auto& [name, types] : {std::pair<QString, QStringList>("channel", {"DCUCHANNEL"}), {"pll", {"PLL"}},
                 {"ref", {"EXTREF"}}, {"supply", {"UVCCIO"}}, {"clock", {"PLL", "EXTREF"}}}) {
            mirn::zelengine::SiteKind kind{name, name, {}, {}};
            for (const QString& accepted : types)
                kind.accepts.push_back(type(accepted));
            device.addKind(kind);
        }
        addSites();
        addResources();
        placeSome();
    }

    const Sort sort;
    mirn::zelengine::Device device;
    mirn::zelengine::Design design{"top"};
    zeltest::Random random;
    mirn::zelengine::SettingStore settings;

private:
    void addSite(const QString& kind, const QString& group, const QStringList& reaches = {})
    {
        mirn::zelengine::Site site;
        site.id = static_cast<int>(device.sites().size()) + 1;
        site.name = QString("S%1").arg(site.id);
        site.kind = device.kindIndex(kind);
        site.group = group;
        site.reaches = reaches;
        if (random.below(8) == 0) { // it is out of use: a setting of its own says so
            site.settings = {{"POWER", "DOWN", {"UP", "DOWN"}}};
            site.disabledBy.insert("POWER", {"DOWN"});
        }
        if (kind == "channel" && random.below(2) == 0)
            site.neighbours.append(QString("U%1").arg(random.below(3)));
        device.addSite(site);
    }

    [[nodiscard]] const mirn::zelengine::ResourceType* type(const QString& name) const
    {
        return mirn::zelengine::findType(device.types(), name);
    }

    // The standard types, some of them with a rule more.
    void describeTypes()
    {
        std::vector<std::shared_ptr<mirn::zelengine::ResourceType>> types;
        for (const auto& standard : mirn::zelengine::standardTypes())
            types.push_back(std::make_shared<mirn::zelengine::ResourceType>(*standard));
        types[0]->parts = types[1].get();
        for (int n = sort == Sort::GroupRules ? 2 : 0; n > 0; --n)
            types[1 + random.below(4)]->mostInGroup = 1 + random.below(2);
        device.setTypes({types.begin(), types.end()});
    }

    void addLinks()
    {
        using Rule = mirn::zelengine::Link::Rule;
        std::vector<int> single;
        for (int resource : design.all()) {
            if (!design.resource(resource).isIp())
                single.push_back(resource);
        }
        for (int n = single.size() > 1 ? 1 + random.below(2) : 0; n > 0; --n) {
            const int from = random.oneOf(single);
            const int to = random.oneOf(single);
            if (from != to)
                design.addLink(from, to, random.oneOf(std::vector<Rule>{Rule::SameUnit, Rule::Reachable, Rule::Near}));
        }
    }

    void addSites()
    {
        for (const QString unit : {"U0", "U1", "U2"}) {
            for (int n = random.below(3); n >= 0; --n)
                addSite("channel", random.below(12) == 0 ? QString() : unit);
            if (random.below(2) == 0)
                addSite(random.below(3) == 0 ? "clock" : "pll", unit, {unit});
        }
        for (int n = random.below(4); n > 0; --n)
            addSite(random.oneOf(QStringList{"pll", "ref", "clock"}), {}, someUnits());
        for (const QString bank : {"B0", "B1"}) {
            for (int n = random.below(3); n > 0; --n)
                addSite("supply", random.below(6) == 0 ? QString() : bank);
        }
    }

    QStringList someUnits()
    {
        QStringList units;
        for (const QString unit : {"U0", "U1", "U2"}) {
            if (random.below(2) == 0)
                units.append(unit);
        }
        return units;
    }

    int add(int parent, const QString& typeName, const QString& voltage = {})
    {
        mirn::zelengine::Resource resource;
        resource.name = QString("r%1").arg(design.all().size());
        resource.type = type(typeName);
        resource.properties.insert("voltage", voltage);
        return design.add(parent, resource);
    }

    void addResources()
    {
        std::vector<int> ips;
        const bool isPacked = sort == Sort::PackedUnits;
        for (int n = random.below(isPacked ? 5 : 3); n > 0; --n) {
            ips.push_back(add(-1, "IP"));
            for (int channel = random.below(3); channel >= 0; --channel)
                add(ips.back(), "DCUCHANNEL");
            if (random.below(2) == 0)
                add(ips.back(), random.below(2) == 0 ? "PLL" : "EXTREF");
        }
        for (int n = isPacked ? 0 : random.below(3); n > 0; --n) {
            const int clock = add(-1, random.below(2) == 0 ? "PLL" : "EXTREF");
            for (int ip : ips) {
                if (random.below(2) == 0)
                    design.addFeed(clock, ip);
            }
        }
        for (int n = random.below(4); n > 0; --n)
            add(-1, "UVCCIO", random.oneOf(QStringList{"1.8 V", "3.3 V", ""}));
        if (!ips.empty() && random.below(8) == 0)
            design.remove(ips.back());
        if (sort == Sort::Links)
            addLinks();
    }

    // A few placements ask no rule, as those of a design file need not.
    void placeSome()
    {
        const bool isLegal = random.below(10) != 0;
        for (int resource : design.all()) {
            std::vector<int> sites;
            for (const auto& site : device.sites()) {
                if (isLegal ? mirn::zelengine::PlacementRules(device, design).propose(resource, site.id).isAllowed()
                            : device.accepts(site, design.resource(resource).type) && design.occupant(site.id) < 0)
                    sites.push_back(site.id);
            }
            if (!design.resource(resource).isIp() && !sites.empty() && random.below(4) == 0)
                design.setSite(resource, random.oneOf(sites));
        }
    }
};
