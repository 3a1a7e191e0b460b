// SPDX-License-Identifier: MIT
#include "engine/search/classsearch.h"

#include <algorithm>
#include <iterator>
#include <utility>

namespace mirn::zelengine {

namespace {

constexpr double DeadEndsAtFirst = 200; // before the search starts again
constexpr double GrowthOfDeadEnds = 1.5;

std::size_t indexOf(int number)
{
    return static_cast<std::size_t>(number);
}

std::vector<BitSet> domainsOf(const SearchTables& tables)
{
    std::vector<BitSet> result;
    result.reserve(tables.wanted().size());
    for (std::size_t number = 0; number < tables.wanted().size(); ++number)
        result.push_back(tables.classesFor(static_cast<int>(number)));
    return result;
}

std::vector<int> sizesOf(const std::vector<BitSet>& sets)
{
    std::vector<int> result;
    result.reserve(sets.size());
    for (const BitSet& set : sets)
        result.push_back(set.count());
    return result;
}

std::vector<int> sitesOfClasses(const SearchTables& tables)
{
    std::vector<int> result;
    for (const SiteClass& each : tables.classes())
        result.push_back(static_cast<int>(each.sites.size()));
    return result;
}

} // namespace

int ClassChooser::choose(int /*wanted*/, const BitSet& classes)
{
    return classes.values().front();
}

void ClassChooser::take(int /*wanted*/, int /*siteClass*/)
{ }

void ClassChooser::giveBack(int /*wanted*/)
{ }

ClassSearch::ClassSearch(const SearchTables& tables, const std::vector<int>& numbers, ClassChooser& chooser)
    : m_tables(tables)
    , m_numbers(numbers)
    , m_chooser(chooser)
    , m_domains(domainsOf(tables))
    , m_sizes(sizesOf(m_domains))
    , m_classes(m_domains.size(), -1)
    , m_order(m_domains.size(), 0)
    , m_weights(m_domains.size(), 1.0)
    , m_occupants(tables.classes().size())
    , m_matching(sitesOfClasses(tables), m_domains, m_numbers)
    , m_deadEndsLeft(DeadEndsAtFirst)
    , m_deadEndsNext(DeadEndsAtFirst * GrowthOfDeadEnds)
{ }

ClassSearch::End ClassSearch::run(const Clock& mayGoOn)
{
    Conflict conflict = noConflict();
    if (!m_matching.mend()) {
        explainViolators(conflict);
        m_core = conflict.involved.values();
        return End::Impossible;
    }
    while (mayGoOn(static_cast<int>(m_levels.size()))) {
        if (m_levels.empty() || isPlaced(m_levels.back().number)) {
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
    int best = -1;
    double least = 0.0;
    for (int number : m_numbers) {
        if (isPlaced(number))
            continue;
        const double measure = m_sizes[indexOf(number)] / m_weights[indexOf(number)];
        if (best < 0 || measure < least) {
            best = number;
            least = measure;
        }
    }
    return best;
}

void ClassSearch::addLevel(int number)
{
    m_levels.push_back({number, m_trail.size(), BitSet(static_cast<int>(m_occupants.size())), noConflict()});
}

// Tries the next class for the resource of the last level. Returns false, with a conflict, for a dead end.
bool ClassSearch::tryNext(Conflict& conflict)
{
    Level& level = m_levels.back();
    BitSet candidates = m_domains[indexOf(level.number)];
    candidates.subtract(level.tried);
    conflict = noConflict();
    if (!candidates.isEmpty()) {
        choose(level, m_chooser.choose(level.number, candidates));
        if (m_matching.mend())
            return true;
        for (int violator : m_matching.violators())
            m_weights[indexOf(violator)] += 1.0;
        explainViolators(conflict);
        return false;
    }
    conflict = level.conflict;
    conflict.involved.insert(level.number);
    BitSet missing = m_tables.classesFor(level.number);
    missing.subtract(m_domains[indexOf(level.number)]);
    explainMissing(level.number, missing, conflict);
    return false;
}

// Takes from all others the classes that the rules do not leave them, and the class itself when it is full.
void ClassSearch::choose(Level& level, int siteClass)
{
    const int number = level.number;
    level.tried.insert(siteClass);
    m_classes[indexOf(number)] = siteClass;
    m_order[indexOf(number)] = m_levels.size();
    m_occupants[indexOf(siteClass)].push_back(number);
    m_matching.take(number, siteClass);
    m_chooser.take(number, siteClass);
    for (int related : m_tables.wanted(number).related) {
        if (isPlaced(related))
            continue;
        BitSet left = m_domains[indexOf(related)];
        left.intersect(m_tables.classesBeside(number, siteClass, related));
        setDomain(related, left);
    }
    if (m_matching.hasRoom(siteClass))
        return;
    for (int other : m_numbers) {
        if (isPlaced(other) || !m_domains[indexOf(other)].contains(siteClass))
            continue;
        BitSet left = m_domains[indexOf(other)];
        left.remove(siteClass);
        setDomain(other, left);
    }
}

void ClassSearch::setDomain(int number, const BitSet& domain)
{
    BitSet& present = m_domains[indexOf(number)];
    bool hasChanged = false;
    for (std::size_t word = 0; word < domain.words().size(); ++word) {
        const quint64 before = present.words()[word];
        const quint64 after = domain.words()[word];
        if (before == after)
            continue;
        m_trail.push_back({number, word, before});
        m_sizes[indexOf(number)] -= static_cast<int>(qPopulationCount(before ^ after));
        present.setWord(word, after);
        hasChanged = true;
    }
    if (hasChanged)
        m_matching.shrank(number);
}

void ClassSearch::undo(Level& level)
{
    while (m_trail.size() > level.trail) {
        const Change& change = m_trail.back();
        BitSet& domain = m_domains[indexOf(change.number)];
        m_sizes[indexOf(change.number)]
            += static_cast<int>(qPopulationCount(change.before ^ domain.words()[change.word]));
        domain.setWord(change.word, change.before);
        m_trail.pop_back();
    }
    int& siteClass = m_classes[indexOf(level.number)];
    if (siteClass < 0)
        return;
    m_occupants[indexOf(siteClass)].pop_back();
    m_chooser.giveBack(level.number);
    m_matching.giveBack(level.number, siteClass);
    siteClass = -1;
}

// Goes back to the last culprit. Returns false if there is none.
bool ClassSearch::goBack(const Conflict& conflict)
{
    while (!m_levels.empty()) {
        Level& level = m_levels.back();
        undo(level);
        if (conflict.culprits.contains(level.number)) {
            level.conflict.culprits.add(conflict.culprits);
            level.conflict.culprits.remove(level.number);
            level.conflict.involved.add(conflict.involved);
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
    m_deadEndsLeft = m_deadEndsNext;
    m_deadEndsNext *= GrowthOfDeadEnds;
}

void ClassSearch::keepBest()
{
    if (m_levels.size() <= m_best.size())
        return;
    m_best.clear();
    for (const Level& level : m_levels) {
        if (isPlaced(level.number))
            m_best.push_back({level.number, m_classes[indexOf(level.number)]});
    }
}

void ClassSearch::takeBest()
{
    startAgain();
    for (const auto& [number, siteClass] : m_best) {
        addLevel(number);
        choose(m_levels.back(), siteClass);
    }
    std::vector<int> rest;
    std::copy_if(
        m_numbers.begin(), m_numbers.end(), std::back_inserter(rest), [this](int number) { return !isPlaced(number); });
    const auto hasFewer = [this](int a, int b) { return m_sizes[indexOf(a)] < m_sizes[indexOf(b)]; };
    std::stable_sort(rest.begin(), rest.end(), hasFewer);
    for (int number : rest) {
        if (m_domains[indexOf(number)].isEmpty())
            continue;
        addLevel(number);
        choose(m_levels.back(), m_chooser.choose(number, m_domains[indexOf(number)]));
    }
}

ClassSearch::Conflict ClassSearch::noConflict() const
{
    const BitSet none(static_cast<int>(m_domains.size()));
    return {none, none};
}

// The violators have too few sites between them: because of those that occupy sites of the classes left to them, and of
// those that have taken other classes from one of them.
void ClassSearch::explainViolators(Conflict& conflict) const
{
    BitSet left(static_cast<int>(m_occupants.size()));
    for (int violator : m_matching.violators()) {
        conflict.involved.insert(violator);
        left.add(m_domains[indexOf(violator)]);
    }
    left.forEach([&](int siteClass) {
        for (int occupant : m_occupants[indexOf(siteClass)])
            conflict.culprits.insert(occupant);
    });
    for (int violator : m_matching.violators()) {
        BitSet missing = m_tables.classesFor(violator);
        missing.subtract(left);
        explainMissing(violator, missing, conflict);
    }
}

// Blames those that were placed first, so that the search goes back far.
void ClassSearch::explainMissing(int number, BitSet missing, Conflict& conflict) const
{
    for (int related : placedAmong(m_tables.wanted(number).related)) {
        if (missing.isEmpty())
            return;
        BitSet taken = missing;
        taken.subtract(m_tables.classesBeside(related, m_classes[indexOf(related)], number));
        if (taken.isEmpty())
            continue;
        conflict.culprits.insert(related);
        missing.subtract(taken);
    }
    missing.forEach([&](int siteClass) {
        for (int occupant : m_occupants[indexOf(siteClass)])
            conflict.culprits.insert(occupant);
    });
}

std::vector<int> ClassSearch::placedAmong(const std::vector<int>& numbers) const
{
    std::vector<int> result;
    std::copy_if(
        numbers.begin(), numbers.end(), std::back_inserter(result), [this](int number) { return isPlaced(number); });
    std::sort(result.begin(), result.end(), [this](int a, int b) { return m_order[indexOf(a)] < m_order[indexOf(b)]; });
    return result;
}

} // namespace mirn::zelengine
