// SPDX-License-Identifier: MIT
#include "engine/search/searchstate.h"

#include <QtAlgorithms>

#include <algorithm>

namespace mirn::zelengine {

namespace {

std::size_t place(int index)
{
    return static_cast<std::size_t>(index);
}

std::vector<BitSet> domainsOf(const SearchTables& tables)
{
    std::vector<BitSet> result;
    result.reserve(tables.sorts().size());
    for (const Sort& sort : tables.sorts())
        result.push_back(sort.room);
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

std::vector<std::vector<int>> waitingOf(const SearchTables& tables, const std::vector<int>& numbers)
{
    std::vector<std::vector<int>> result(tables.sorts().size());
    for (auto number = numbers.rbegin(); number != numbers.rend(); ++number)
        result[place(tables.wanted(*number).sort)].push_back(*number);
    return result;
}

std::vector<int> countsOf(const std::vector<std::vector<int>>& lists)
{
    std::vector<int> result;
    result.reserve(lists.size());
    for (const std::vector<int>& list : lists)
        result.push_back(static_cast<int>(list.size()));
    return result;
}

} // namespace

SearchState::SearchState(const SearchTables& tables, const std::vector<int>& numbers)
    : m_tables(tables)
    , m_domains(domainsOf(tables))
    , m_sizes(sizesOf(m_domains))
    , m_waiting(waitingOf(tables, numbers))
    , m_placed(m_waiting.size())
    , m_classes(tables.wanted().size(), -1)
    , m_order(tables.wanted().size(), 0)
    , m_occupants(tables.classes().size())
    , m_concerned(tables.rules().size())
    , m_groups(tables)
    , m_matching(tables, m_domains, countsOf(m_waiting))
{
    for (std::size_t sort = 0; sort < tables.sorts().size(); ++sort) {
        for (std::size_t rule = 0; rule < m_concerned.size(); ++rule) {
            if (tables.sorts()[sort].labels[rule] >= 0)
                m_concerned[rule].push_back(static_cast<int>(sort));
        }
    }
}

int SearchState::nextOf(int sort) const
{
    return waiting(sort).empty() ? -1 : waiting(sort).back();
}

int SearchState::freeSites(int siteClass) const
{
    return static_cast<int>(m_tables.sites().at(siteClass).sites.size() - occupants(siteClass).size());
}

void SearchState::take(int number, int siteClass)
{
    const int sort = m_tables.wanted(number).sort;
    const int unit = m_tables.sites().at(siteClass).unit;
    m_order[place(number)] = m_marks.size();
    m_marks.push_back(m_trail.size());
    m_classes[place(number)] = siteClass;
    m_occupants[place(siteClass)].push_back(number);
    m_waiting[place(sort)].pop_back();
    m_placed[place(sort)].push_back(number);
    m_matching.take(sort, siteClass);
    restrictRelated(sort, siteClass);
    for (int rule : m_groups.take(sort, unit))
        closeUnit(rule, unit);
    if (m_matching.hasRoom(siteClass))
        return;
    for (int other = 0; other < static_cast<int>(m_domains.size()); ++other)
        removeFrom(other, siteClass);
}

void SearchState::giveBack(int number)
{
    const int sort = m_tables.wanted(number).sort;
    for (; m_trail.size() > m_marks.back(); m_trail.pop_back()) {
        const Change& change = m_trail.back();
        BitSet& domain = m_domains[place(change.sort)];
        const std::size_t word = place(change.word);
        m_sizes[place(change.sort)] += static_cast<int>(qPopulationCount(change.before ^ domain.words()[word]));
        domain.setWord(word, change.before);
    }
    m_marks.pop_back();
    int& siteClass = m_classes[place(number)];
    m_groups.giveBack(sort, m_tables.sites().at(siteClass).unit);
    m_occupants[place(siteClass)].pop_back();
    m_placed[place(sort)].pop_back();
    m_waiting[place(sort)].push_back(number);
    m_matching.giveBack(sort, siteClass);
    siteClass = -1;
}

void SearchState::restrictRelated(int sort, int siteClass)
{
    for (const auto& [related, kind] : m_tables.sort(sort).related) {
        if (waiting(related).empty())
            continue;
        const BitSet& left = m_tables.classesBeside(siteClass, kind);
        for (std::size_t word = 0; word < left.words().size(); ++word)
            setWord(related, word, domain(related).words()[word] & left.words()[word]);
        m_matching.shrank(related);
    }
}

void SearchState::closeUnit(int rule, int unit)
{
    for (int sort : m_concerned[place(rule)]) {
        if (waiting(sort).empty() || m_groups.isOpen(rule, sort, unit))
            continue;
        for (int siteClass : m_tables.sites().classesOf(unit))
            removeFrom(sort, siteClass);
    }
}

void SearchState::removeFrom(int sort, int siteClass)
{
    if (waiting(sort).empty() || !domain(sort).contains(siteClass))
        return;
    const std::size_t word = place(siteClass / BitSet::WordBits);
    setWord(sort, word, domain(sort).words()[word] & ~(quint64(1) << (siteClass % BitSet::WordBits)));
    m_matching.lost(sort, siteClass);
}

void SearchState::setWord(int sort, std::size_t word, quint64 after)
{
    const quint64 before = domain(sort).words()[word];
    if (before == after)
        return;
    m_trail.push_back({sort, static_cast<int>(word), before});
    m_sizes[place(sort)] -= static_cast<int>(qPopulationCount(before ^ after));
    m_domains[place(sort)].setWord(word, after);
}

} // namespace mirn::zelengine
