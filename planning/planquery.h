// SPDX-License-Identifier: MIT
#pragma once

#include "planning/dropplan.h"

#include <QString>

#include <vector>

class zelchipengine;
class zelplanengine;

namespace mirn::zelchipview {

// Asks an engine what decides a placement, with Qt's texts. Every answer is empty if the engine is no zelplanengine.
class PlanQuery final
{
public:
    // The engine is not owned and must outlive the query.
    explicit PlanQuery(zelchipengine& engine);

    // Returns whether a resource may be placed on an element; if not, *refusal is the engine's sentence, if it has one.
    [[nodiscard]] bool mayPlace(const QString& resource, int site, QString* refusal) const;
    [[nodiscard]] bool maySwap(const QString& resource, const QString& other, QString* refusal) const;
    [[nodiscard]] QString refusalToPlace(const QString& resource) const; // that holds for every element
    [[nodiscard]] std::vector<zelplacement> placementsOf(const QString& resource, int site) const;
    [[nodiscard]] QString occupant(int site) const;
    [[nodiscard]] int siteOf(const QString& resource) const; // -1 if it is not placed
    [[nodiscard]] QString describe(const QString& resource) const;

    // Returns what would follow if a resource were dropped on an element now. One that is placed may also be dropped on
    // an occupied site, if the engine allows that the two exchange their sites.
    [[nodiscard]] DropPlan dropOf(const QString& resource, int site) const;

private:
    void planSwap(DropPlan& plan) const;

    zelchipengine& m_engine;
    zelplanengine& m_plans; // the same engine, or one without answers
};

} // namespace mirn::zelchipview
