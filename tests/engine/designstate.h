// SPDX-License-Identifier: MIT
#pragma once

#include "engine/referenceengine.h"

#include <QHash>
#include <QStringList>

// Brings a design named "top" into a state, written as placements "RESOURCE@SITE" and settings "SITE KEY=VALUE", and
// asks no rule.
inline void enterState(mirn::zelengine::ReferenceEngine& engine, const QStringList& state)
{
    std::vector<mirn::zelengine::Placement> placements;
    QHash<int, mirn::zelengine::SiteSettingChanges> settings;
    const auto idOf = [&engine](const QString& site) { return engine.device().site(site)->id; };
    for (const QString& each : state) {
        const QStringList placement = each.split('@');
        const QStringList setting = each.split(' ');
        if (placement.size() == 2)
            placements.push_back({engine.design().find("top/" + placement[0]), idOf(placement[1])});
        else
            settings[idOf(setting[0])].insert(setting[1].section('=', 0, 0), setting[1].section('=', 1));
    }
    engine.setSites(placements);
    for (auto it = settings.cbegin(); it != settings.cend(); ++it)
        engine.setSettingChanges(it.key(), it.value());
}
