// SPDX-License-Identifier: MIT
#include "engine/search/placementsearch.h"

#include "engine/search/classsearch.h"
#include "engine/search/nearsites.h"
#include "engine/search/partners.h"
#include "engine/search/placementconflict.h"
#include "engine/search/searchtables.h"

#include <QSet>

#include <algorithm>
#include <iterator>
#include <numeric>

namespace mirn::zelengine {

namespace {

using Time = std::chrono::steady_clock;

constexpr std::chrono::milliseconds TimeForWords(1000); // to narrow a conflict
constexpr std::chrono::milliseconds TimeBetweenReports(50);
constexpr int PartForTheRest = 10; // one of so many
constexpr int MostLeftOut = 16; // resources, one after the other, until the rest of an impossible placement is found

} // namespace

// The time that a search has, and whom it tells about its progress.
class PlacementSearch::Clock
{
public:
    Clock(const Limits& limits, int wanted)
        : m_limits(limits)
        , m_wanted(wanted)
        , m_end(Time::now() + limits.time)
    { }

    [[nodiscard]] bool isCancelled() const { return m_limits.isCancelled && m_limits.isCancelled(); }

    // A part of the time is left for what comes after the search.
    [[nodiscard]] bool maySearch(int placed)
    {
        const Time::time_point now = Time::now();
        if (m_limits.progress && now >= m_nextReport) {
            m_limits.progress(placed, m_wanted);
            m_nextReport = now + TimeBetweenReports;
        }
        return now < m_end - m_limits.time / PartForTheRest && !isCancelled();
    }

    [[nodiscard]] std::function<bool()> rest() const
    {
        return [this] { return Time::now() < m_end && !isCancelled(); };
    }

    // Returns a clock for a part of the search, which has no more time than this.
    [[nodiscard]] std::function<bool()> part(std::chrono::milliseconds time) const
    {
        return [this, end = std::min(m_end, Time::now() + time)] { return Time::now() < end && !isCancelled(); };
    }

private:
    const Limits& m_limits;
    const int m_wanted;
    const Time::time_point m_end;
    Time::time_point m_nextReport = Time::now() + TimeBetweenReports;
};

PlacementSearch::PlacementSearch(
    const Device& device, const Design& design, const SettingStore& settings, const Position& position)
    : m_device(device)
    , m_design(design)
    , m_settings(m_device)
    , m_groupRules(groupRulesOf(m_device))
{
    for (auto it = settings.changes().cbegin(); it != settings.changes().cend(); ++it)
        m_settings.setChanges(it.key(), it.value());
    for (const Site& site : m_device.sites()) {
        const std::optional<QPointF> point = position ? position(site.id) : std::nullopt;
        if (point)
            m_points.insert(site.id, *point);
    }
}

std::vector<int> PlacementSearch::unplaced() const
{
    return placeable(m_design.all());
}

std::vector<int> PlacementSearch::unplacedBelow(const std::vector<int>& tops) const
{
    QSet<int> below;
    for (int top : tops) {
        for (int index : m_design.subtree(top))
            below.insert(index);
    }
    std::vector<int> result = unplaced();
    result.erase(
        std::remove_if(result.begin(), result.end(), [&](int index) { return !below.contains(index); }), result.end());
    return result;
}

std::vector<int> PlacementSearch::placeable(const std::vector<int>& candidates) const
{
    std::vector<int> result;
    for (int index : candidates) {
        const Resource& resource = m_design.resource(index);
        if (hasOwnSite(resource.type) && resource.site < 0 && !resource.fixed)
            result.push_back(index);
    }
    return result;
}

PlacementAnswer PlacementSearch::run(const std::vector<int>& resources, const Limits& limits) const
{
    Clock clock(limits, static_cast<int>(resources.size()));
    const SearchTables tables(m_device, m_design, m_settings, resources, SearchRules(m_groupRules), clock.rest());
    PlacementAnswer answer;
    answer.kind = PlacementAnswer::Kind::NotFound;
    if (tables.isComplete())
        answer = search(tables, clock);
    if (clock.isCancelled())
        answer = {PlacementAnswer::Kind::Cancelled, {}, {}, {}, {}, QStringLiteral("the search was cancelled")};
    QSet<int> placed;
    for (const Placement& placement : answer.placements)
        placed.insert(placement.resource);
    std::copy_if(resources.begin(), resources.end(), std::back_inserter(answer.missing),
        [&placed](int resource) { return !placed.contains(resource); });
    if (answer.kind == PlacementAnswer::Kind::NotFound && answer.missing.empty())
        answer.kind = PlacementAnswer::Kind::Placed;
    if (answer.kind == PlacementAnswer::Kind::NotFound)
        answer.sentence = QStringLiteral("no placement was found in %1 s, and none was proven impossible")
                              .arg(static_cast<double>(limits.time.count()) / 1000.0);
    return answer;
}

// Leaves out resources of conflicts, one after the other, until the others have a placement. It explains the first
// conflict; the plan for the others is not the largest that there is.
PlacementAnswer PlacementSearch::search(const SearchTables& tables, Clock& clock) const
{
    PlacementAnswer answer;
    std::vector<int> numbers(tables.wanted().size());
    std::iota(numbers.begin(), numbers.end(), 0);
    const std::vector<std::vector<int>> partners = partnersOf(tables);
    for (int leftOut = 0;; ++leftOut) {
        NearSites sites(tables, m_design, m_points, partners);
        ClassSearch search(tables, numbers, sites);
        const ClassSearch::End end = search.run([&clock](int placed) { return clock.maySearch(placed); });
        if (end == ClassSearch::End::Impossible && leftOut == 0)
            explain(tables, search.core(), clock, answer);
        if (end == ClassSearch::End::Impossible && leftOut < MostLeftOut) {
            numbers.erase(std::find(numbers.begin(), numbers.end(), search.core().back()));
            continue;
        }
        if (clock.isCancelled())
            return answer; // nothing of it will be used
        if (end == ClassSearch::End::Stopped && leftOut == 0)
            answer.kind = PlacementAnswer::Kind::NotFound;
        if (end != ClassSearch::End::Complete)
            search.takeBest([mayGoOn = clock.rest()](int) { return mayGoOn(); });
        sites.improve(clock.rest());
        answer.placements = sites.placements();
        return answer;
    }
}

// By number; nobody asks for them if there are no points.
std::vector<std::vector<int>> PlacementSearch::partnersOf(const SearchTables& tables) const
{
    const Partners partners(m_design);
    std::vector<std::vector<int>> result;
    for (const Wanted& each : tables.wanted())
        result.push_back(m_points.isEmpty() ? std::vector<int>() : partners.of(each.resource));
    return result;
}

std::vector<Placement> PlacementSearch::ofUnplaced(const Design& design, const std::vector<Placement>& placements)
{
    std::vector<Placement> result;
    std::copy_if(
        placements.begin(), placements.end(), std::back_inserter(result), [&design](const Placement& placement) {
            const Resource& resource = design.resource(placement.resource);
            return resource.site < 0 && design.find(resource.path) == placement.resource;
        });
    return result;
}

void PlacementSearch::explain(
    const SearchTables& tables, const std::vector<int>& core, Clock& clock, PlacementAnswer& answer) const
{
    std::vector<int> resources;
    for (int number : core)
        resources.push_back(tables.wanted(number).resource);
    const ConflictReader reader(m_device, m_design, m_settings, SearchRules(m_groupRules));
    const std::function<bool()> mayGoOn = clock.part(TimeForWords);
    const PlacementConflict conflict = reader.narrowed(resources, mayGoOn);
    answer.kind = PlacementAnswer::Kind::Impossible;
    answer.conflict = conflict.resources;
    answer.reasons = reader.placedReasons(conflict, mayGoOn);
    answer.sentence = reader.sentence(conflict);
}

} // namespace mirn::zelengine
