// SPDX-License-Identifier: MIT
#pragma once

#include "engine/search/bitset.h"
#include "engine/search/deadends.h"
#include "engine/search/searchstate.h"
#include "engine/search/searchtables.h"
#include "engine/search/unitpacking.h"

#include <functional>
#include <utility>
#include <vector>

namespace mirn::zelengine {

// Says in which order a search tries the classes, and hears what it has chosen. This one knows no places: it takes the
// first class.
class ClassChooser
{
public:
    ClassChooser() = default;
    virtual ~ClassChooser() = default;
    ClassChooser(const ClassChooser&) = delete;
    ClassChooser& operator=(const ClassChooser&) = delete;

    // `classes` is not empty.
    [[nodiscard]] virtual int choose(int wanted, const BitSet& classes);
    virtual void take(int wanted, int siteClass);
    virtual void giveBack(int wanted);
};

// Finds a class for every wanted resource, so that all rules are kept, or proves that there is none. It is a search
// with forward checking and conflict-directed backjumping (Prosser, "Hybrid Algorithms for the Constraint Satisfaction
// Problem", 1993), which also regards a matching (see ClassMatching; Régin, "A Filtering Algorithm for Constraints of
// Difference in CSPs", 1994). The sort with the fewest classes for its weight comes next, and every dead end adds to
// the weight of those that caused it (Boussemart and others, "Boosting Systematic Search by Weighting Constraints",
// 2004). It starts again after more and more dead ends; since their number has no bound, it still ends with a proof.
// Every second time it places IP by IP (see UnitPacking), which finds what single channels, each near to its partners,
// block for each other.
//
// A dead end names the culprits: the earlier choices without which it would be none. The search goes back to the last
// of them. If there is none, those that took part in the proof have no placement, whatever else is wanted.
class ClassSearch final
{
public:
    enum class End { Complete, Impossible, Stopped };

    // Looks for classes for the wanted resources with these numbers. Tables and chooser must outlive the search.
    ClassSearch(const SearchTables& tables, const std::vector<int>& numbers, ClassChooser& chooser);

    // Called again and again with the number of resources that have a class; returns whether to go on.
    using Clock = std::function<bool(int placed)>;
    [[nodiscard]] End run(const Clock& mayGoOn);

    // The numbers of wanted resources that have no placement together; after the end Impossible.
    [[nodiscard]] const std::vector<int>& core() const { return m_core; }
    // After another end than Complete: goes back to the most choices that there were at one time, and adds what fits
    // until the clock says no.
    void takeBest(const Clock& mayGoOn);

private:
    struct Level
    {
        int number;
        BitSet tried; // classes
        SearchConflict conflict; // of the classes that were tried
    };

    [[nodiscard]] int next() const;
    void addLevel(int number);
    [[nodiscard]] bool tryNext(SearchConflict& conflict);
    void choose(Level& level, int siteClass);
    void undo(Level& level);
    [[nodiscard]] bool goBack(const SearchConflict& conflict);
    void startAgain();
    void keepBest();
    [[nodiscard]] std::vector<int> sortsByRoom() const;
    [[nodiscard]] int sortOf(int number) const { return m_tables.wanted(number).sort; }

    const SearchTables& m_tables;
    ClassChooser& m_chooser;
    SearchState m_state;
    DeadEnds m_deadEnds;
    UnitPacking m_packing;
    bool m_isPacking = false;
    std::vector<double> m_weights; // by sort
    std::vector<Level> m_levels;
    std::vector<std::pair<int, int>> m_best; // numbers and classes
    std::vector<int> m_core;
    double m_deadEndsLeft;
    double m_deadEndsNext;
};

} // namespace mirn::zelengine
