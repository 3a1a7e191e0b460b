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
    [[nodiscard]] std::vector<int> ofClock(int clock) const;
    [[nodiscard]] std::vector<int> some(const std::vector<int>& candidates, int resource) const;

    const Design& m_design;
    QHash<QString, std::vector<int>> m_supplies; // by voltage
};

} // namespace mirn::zelengine
