// SPDX-License-Identifier: MIT
#include "engine/search/classsearch.h"

#include <algorithm>

namespace mirn::zelengine {

namespace {

constexpr double DeadEndsAtFirst = 200; // before the search starts again
constexpr double GrowthOfDeadEnds = 1.5;

std::size_t indexOf(int number)
{
    return static_cast<std::size_t>(number);
}

} // namespace

int ClassChooser::choose(int /*wanted*/, const BitSet& classes)
{
    return classes.first();
}

void ClassChooser::take(int /*wanted*/, int /*siteClass*/)
{ }

void ClassChooser::giveBack(int /*wanted*/)
{ }

ClassSearch::ClassSearch(const SearchTables& tables, const std::vector<int>& numbers, ClassChooser& chooser)
    : m_tables(tables)
    , m_chooser(chooser)
    , m_state(tables, numbers)
    , m_deadEnds(tables, m_state)
    , m_packing(tables, m_state)
    , m_weights(tables.sorts().size(), 1.0)
    , m_deadEndsLeft(DeadEndsAtFirst)
    , m_deadEndsNext(DeadEndsAtFirst * GrowthOfDeadEnds)
{ }

ClassSearch::End ClassSearch::run(const Clock& mayGoOn)
{
    SearchConflict conflict;
    m_core = m_state.matching().mend() ? m_packing.tooMany() : m_deadEnds.ofMatching().involved.values();
    if (!m_core.empty())
        return End::Impossible;
    while (mayGoOn(static_cast<int>(m_levels.size()))) {
        if (m_levels.empty() || m_state.isPlaced(m_levels.back().number)) {
            const int number = next();
            if (number < 0)
                return End::Complete;
            addLevel(number);
        }
        if (tryNext(conflict))
            continue;
        keepBest();
        if (!goBack(conflict)) {
            m_core = conflict.involved.values();
            return End::Impossible;
        }
        if (--m_deadEndsLeft < 0)
            startAgain();
    }
    keepBest();
    return End::Stopped;
}

int ClassSearch::next() const
{
    const int packed = m_isPacking ? m_packing.nextSort(m_weights) : -1;
    if (packed >= 0)
        return m_state.nextOf(packed);
    int best = -1;
    double least = 0.0;
    for (int sort = 0; sort < static_cast<int>(m_weights.size()); ++sort) {
        const int number = m_state.nextOf(sort);
        const double measure = m_state.size(sort) / m_weights[indexOf(sort)];
        if (number < 0 || (best >= 0 && measure > least) || (best >= 0 && measure == least && number > best))
            continue;
        best = number;
        least = measure;
    }
    return best;
}

void ClassSearch::addLevel(int number)
{
    m_levels.push_back({number, m_tables.sites().none(), SearchConflict()});
}

// Tries the next class for the resource of the last level. Returns false, with a conflict, for a dead end.
bool ClassSearch::tryNext(SearchConflict& conflict)
{
    Level& level = m_levels.back();
    const int sort = sortOf(level.number);
    BitSet candidates = m_state.domain(sort);
    candidates.subtract(level.tried);
    if (!candidates.isEmpty()) {
        choose(level, m_chooser.choose(level.number, m_isPacking ? m_packing.bestFit(sort, candidates) : candidates));
        if (m_state.matching().mend())
            return true;
        for (int violator : m_state.matching().reachedSorts())
            m_weights[indexOf(violator)] += 1.0;
        conflict = m_deadEnds.ofMatching();
        return false;
    }
    conflict = m_deadEnds.none();
    if (!level.conflict.culprits.words().empty())
        conflict = level.conflict;
    conflict.involved.insert(level.number);
    BitSet missing = m_tables.sort(sort).room;
    missing.subtract(m_state.domain(sort));
    m_deadEnds.explainMissing(sort, missing, conflict);
    return false;
}

void ClassSearch::choose(Level& level, int siteClass)
{
    level.tried.insert(siteClass);
    m_state.take(level.number, siteClass);
    m_chooser.take(level.number, siteClass);
}

void ClassSearch::undo(Level& level)
{
    if (!m_state.isPlaced(level.number))
        return;
    m_chooser.giveBack(level.number);
    m_state.giveBack(level.number);
}

// Goes back to the last culprit. Returns false if there is none.
bool ClassSearch::goBack(const SearchConflict& conflict)
{
    while (!m_levels.empty()) {
        Level& level = m_levels.back();
        undo(level);
        if (conflict.culprits.contains(level.number)) {
            level.conflict.add(conflict);
            level.conflict.culprits.remove(level.number);
            return true;
        }
        m_levels.pop_back();
    }
    return false;
}

void ClassSearch::startAgain()
{
    for (; !m_levels.empty(); m_levels.pop_back())
        undo(m_levels.back());
    m_isPacking = !m_isPacking;
    m_deadEndsLeft = m_deadEndsNext;
    m_deadEndsNext *= GrowthOfDeadEnds;
}

void ClassSearch::keepBest()
{
    if (m_levels.size() <= m_best.size())
        return;
    m_best.clear();
    for (const Level& level : m_levels) {
        if (m_state.isPlaced(level.number))
            m_best.push_back({level.number, m_state.classOf(level.number)});
    }
}

void ClassSearch::takeBest(const Clock& mayGoOn)
{
    const auto add = [this](int number, int siteClass) {
        addLevel(number);
        choose(m_levels.back(), siteClass);
    };
    if (!m_levels.empty() && !m_state.isPlaced(m_levels.back().number))
        m_levels.pop_back();
    if (m_levels.size() < m_best.size()) {
        startAgain();
        for (const auto& [number, siteClass] : m_best) {
            if (!mayGoOn(static_cast<int>(m_levels.size())))
                return;
            add(number, siteClass);
        }
    }
    for (int sort : sortsByRoom()) {
        while (m_state.nextOf(sort) >= 0 && m_state.size(sort) > 0) {
            if (!mayGoOn(static_cast<int>(m_levels.size())))
                return;
            add(m_state.nextOf(sort), m_chooser.choose(m_state.nextOf(sort), m_state.domain(sort)));
        }
    }
}

std::vector<int> ClassSearch::sortsByRoom() const
{
    std::vector<int> result;
    for (int sort = 0; sort < static_cast<int>(m_weights.size()); ++sort)
        result.push_back(sort);
    std::stable_sort(result.begin(), result.end(), [this](int a, int b) { return m_state.size(a) < m_state.size(b); });
    return result;
}

} // namespace mirn::zelengine
