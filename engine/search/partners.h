// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QString>

#include <vector>

namespace mirn::zelengine {

class Design;

// Which resources a resource should be near to: a channel to the channels and clock sources of its IP, a clock source
// to the channels that it serves, a supply to those of its voltage, and what has none of these to its siblings. Of many
// only some are named, the placed ones first, because one of them stands for those beside it.
class Partners final
{
public:
    // The design must outlive it.
    explicit Partners(const Design& design);

    [[nodiscard]] std::vector<int> of(int resource) const;

private:
    struct Candidates // in ascending order
    {
        std::vector<int> placed;
        std::vector<int> others;
    };

    [[nodiscard]] Candidates split(std::vector<int> resources) const;
    [[nodiscard]] const Candidates& partsOf(int ip) const;
    [[nodiscard]] const Candidates& siblings(int parent) const;
    [[nodiscard]] std::vector<int> ofClock(int clock) const;
    [[nodiscard]] std::vector<int> some(const Candidates& candidates, int resource) const;

    const Design& m_design;
    QHash<QString, Candidates> m_supplies; // by voltage
    // Made when they are first asked for.
    mutable QHash<int, Candidates> m_parts; // by IP: channels and clock sources
    mutable QHash<int, Candidates> m_siblings; // by parent
};

} // namespace mirn::zelengine
