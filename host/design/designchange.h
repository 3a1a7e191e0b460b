// SPDX-License-Identifier: MIT
#pragma once

#include "engine/rules/placementrules.h"
#include "engine/rules/settingstore.h"

#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelengine {
class Design;
class ReferenceEngine;
} // namespace mirn::zelengine

namespace mirn::zelchip {

// A change of the design that can be made and taken back, and the commands that do the same. It stores only what it
// changes, so that a long undo history stays small.
struct DesignChange
{
    enum class Branch { Stays, Goes, ComesBack }; // what happens to a resource and its subtree

    struct Parameter
    {
        int resource;
        QString key;
        QString before;
        QString after;
    };

    // Adds the placements that differ from what the design has.
    void takeSites(const zelengine::Design& design, const std::vector<zelengine::Placement>& placements);

    // Makes the change, or takes it back. The design is in the state from which that was accepted.
    void apply(zelengine::ReferenceEngine& engine, bool isForward) const;
    [[nodiscard]] QStringList commands(const zelengine::ReferenceEngine& engine, bool isForward) const;

    QString text; // for the undo menu
    Branch branch = Branch::Stays;
    QString branchPath; // the resource at its top
    // When a branch is removed, these hold only what the engine does not restore together with it.
    std::vector<zelengine::Placement> sitesBefore;
    std::vector<zelengine::Placement> sitesAfter; // for the same resources, in the same order
    std::vector<int> lockedBefore; // the resources that are not locked afterwards
    std::vector<int> lockedAfter; // the resources that were not locked before
    std::vector<Parameter> parameters;
    int settingsSite = -1; // the site that carries the settings; -1 if none change
    zelengine::SiteSettingChanges settingsBefore;
    zelengine::SiteSettingChanges settingsAfter;

private:
    [[nodiscard]] bool removes(bool isForward) const
    {
        return branch == (isForward ? Branch::Goes : Branch::ComesBack);
    }
    [[nodiscard]] bool restores(bool isForward) const { return removes(!isForward); }
    [[nodiscard]] QStringList moves(const zelengine::Design& design, bool isForward) const;
    [[nodiscard]] QStringList settings(const zelengine::ReferenceEngine& engine, bool isForward) const;
};

} // namespace mirn::zelchip
