// SPDX-License-Identifier: MIT
#pragma once

#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/rules/placementrules.h"
#include "engine/rules/settingstore.h"
#include "tests/support/random.h"

// A small random device and a design on it, some of it placed and little of it easy: few units, banks and clock sites,
// and about as many resources as sites.
struct RandomDesign
{
    explicit RandomDesign(unsigned int seed)
        : random(seed)
        , settings(device)
    {
        using mirn::zelengine::ResourceType;
        for (const auto& [name, types] :
            {std::pair<QString, std::vector<ResourceType>>("channel", {ResourceType::DcuChannel}),
                {"pll", {ResourceType::Pll}}, {"ref", {ResourceType::ExtRef}}, {"supply", {ResourceType::Uvccio}},
                {"clock", {ResourceType::Pll, ResourceType::ExtRef}}})
            device.addKind({name, name, types, {}});
        addSites();
        addResources();
        placeSome();
    }

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

    void addSites()
    {
        for (const QString unit : {"U0", "U1", "U2"}) {
            for (int n = random.below(3); n >= 0; --n)
                addSite("channel", unit);
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

    int add(int parent, mirn::zelengine::ResourceType type, const QString& voltage = {})
    {
        mirn::zelengine::Resource resource;
        resource.name = QString("r%1").arg(design.all().size());
        resource.type = type;
        resource.voltage = voltage;
        return design.add(parent, resource);
    }

    void addResources()
    {
        using mirn::zelengine::ResourceType;
        std::vector<int> ips;
        for (int n = random.below(3); n > 0; --n) {
            ips.push_back(add(-1, ResourceType::Ip));
            for (int channel = random.below(3); channel >= 0; --channel)
                add(ips.back(), ResourceType::DcuChannel);
            if (random.below(2) == 0)
                add(ips.back(), random.below(2) == 0 ? ResourceType::Pll : ResourceType::ExtRef);
        }
        for (int n = random.below(3); n > 0; --n) {
            const int clock = add(-1, random.below(2) == 0 ? ResourceType::Pll : ResourceType::ExtRef);
            for (int ip : ips) {
                if (random.below(2) == 0)
                    design.addFeed(clock, ip);
            }
        }
        for (int n = random.below(4); n > 0; --n)
            add(-1, ResourceType::Uvccio, random.oneOf(QStringList{"1.8 V", "3.3 V", ""}));
        if (!ips.empty() && random.below(8) == 0)
            design.remove(ips.back());
    }

    // A few placements ask no rule, as those of a design file need not.
    void placeSome()
    {
        const bool isLegal = random.below(10) != 0;
        for (int resource : design.all()) {
            const auto type = design.resource(resource).type;
            std::vector<int> sites;
            for (const auto& site : device.sites()) {
                if (isLegal ? mirn::zelengine::PlacementRules(device, design).propose(resource, site.id).isAllowed()
                            : device.accepts(site, type) && design.occupant(site.id) < 0)
                    sites.push_back(site.id);
            }
            const bool isIp = type == mirn::zelengine::ResourceType::Ip;
            if (!isIp && !sites.empty() && random.below(4) == 0)
                design.setSite(resource, random.oneOf(sites));
        }
    }
};
