// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelengine {

class Design;
class Device;
class SettingStore;

// Something about a design that its maker has to see to.
struct Problem
{
    enum class Severity { Error, Warning }; // in the order of the list

    Severity severity = Severity::Error;
    QString sentence; // for users
    QStringList resources; // the paths of those that it concerns
    std::vector<int> sites; // the ids of those that it concerns
};

// Finds the problems of a design on its device: errors are placements that break a rule, resources on sites that a
// setting puts out of use, and settings of one site that contradict each other; warnings are resources without a site.
// It is fast enough to ask after every change: it asks the rules about present placements only. Therefore it says that
// no site is left for a resource only where all sites of the right kind are occupied, not where other rules forbid
// them.
class DesignCheck
{
public:
    // All three must outlive the check.
    DesignCheck(const Device& device, const Design& design, const SettingStore& settings);

    // Errors come before warnings; within a severity the order is that of the design.
    [[nodiscard]] std::vector<Problem> problems() const;

private:
    void findBrokenRules(std::vector<Problem>& problems) const;
    void findSitesOutOfUse(std::vector<Problem>& problems) const;
    void findContradictions(std::vector<Problem>& problems) const;
    void findUnplaced(std::vector<Problem>& problems) const;

    const Device& m_device;
    const Design& m_design;
    const SettingStore& m_settings;
};

} // namespace mirn::zelengine
