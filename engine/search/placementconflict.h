// SPDX-License-Identifier: MIT
#pragma once

#include "engine/search/searchtables.h"

#include <QString>

#include <functional>
#include <vector>

namespace mirn::zelengine {

// Resources that cannot be placed together while the placed ones stay, and the rules that stand against it.
struct PlacementConflict
{
    std::vector<int> resources;
    SearchRules rules; // besides that a site takes one resource of a type that it accepts
};

// Narrows what a search has proven impossible down to what is needed for the proof, and puts it into words. Resources
// and rules are left out one after the other; what remains impossible without one of them does not need it.
class ConflictReader final
{
public:
    // `rules` are all that the search has regarded. The others must outlive the reader.
    ConflictReader(const Device& device, const Design& design, const SettingStore& settings, SearchRules rules);

    using Clock = std::function<bool()>; // returns whether there is time left

    // `resources` have no placement together. When there is no time left, more may remain than is needed.
    [[nodiscard]] PlacementConflict narrowed(std::vector<int> resources, const Clock& mayGoOn) const;

    // A sentence for users, without capital and full stop.
    [[nodiscard]] QString sentence(const PlacementConflict& conflict) const;

    // The placed resources that the rules name as a reason against free sites for these; some of them when there is no
    // time left.
    [[nodiscard]] std::vector<int> placedReasons(const PlacementConflict& conflict, const Clock& mayGoOn) const;

private:
    [[nodiscard]] std::vector<int> fewerResources(std::vector<int> resources, const Clock& mayGoOn) const;
    [[nodiscard]] bool isImpossible(
        const std::vector<int>& resources, const SearchRules& rules, const Clock& mayGoOn) const;
    [[nodiscard]] Refusal refusalOf(int resource, const Site& site, const SearchRules& rules) const;
    [[nodiscard]] QString sentenceForOne(int resource, const SearchRules& rules) const;
    [[nodiscard]] QString shortageOf(const PlacementConflict& conflict) const;

    const Device& m_device;
    const Design& m_design;
    const SettingStore& m_settings;
    const SearchRules m_rules;
};

} // namespace mirn::zelengine
