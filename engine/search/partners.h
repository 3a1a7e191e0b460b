// SPDX-License-Identifier: MIT
#pragma once

#include <QHash>
#include <QPair>
#include <QString>

#include <vector>

namespace mirn::zelengine {

class Design;
struct ResourceType;

// Which resources a resource should be near to: what it is linked with, a part of an IP to the others and to the
// sources of the IP, a source to the parts that it serves, a supply to those of its voltage, and what has none of these
// to its siblings. Of many only some are named, the placed ones first, because one of them stands for those beside it.
class Partners final
{
public:
    // The design must outlive it.
    explicit Partners(const Design& design);

    [[nodiscard]] std::vector<int> of(int resource) const;

private:
    using Statement = QPair<const ResourceType*, QString>; // on which resources of a type agree in a group

    struct Candidates // in ascending order
    {
        std::vector<int> placed;
        std::vector<int> others;
    };

    [[nodiscard]] Candidates split(std::vector<int> resources) const;
    [[nodiscard]] const Candidates& partsOf(int ip) const;
    [[nodiscard]] const Candidates& siblings(int parent) const;
    [[nodiscard]] std::vector<int> connectedWith(int resource) const;
    [[nodiscard]] std::vector<int> some(const Candidates& candidates, int resource) const;

    const Design& m_design;
    QHash<Statement, Candidates> m_stating;
    // Made when they are first asked for.
    mutable QHash<int, Candidates> m_parts; // by IP: parts and sources
    mutable QHash<int, Candidates> m_siblings; // by parent
};

} // namespace mirn::zelengine
