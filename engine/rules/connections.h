// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <vector>

namespace mirn::zelengine {

class Design;
class Device;
class SettingStore;

// Two resources that the rules about placements look at together.
struct Connection
{
    enum class Kind {
        Feeds, // the first feeds the second
        Together, // parts of one IP, and what the design file connects
        OneGroup, // they must agree on a property
    };

    int from = -1; // the source, else the one that comes first
    int to = -1;
    // One sentence for users: the rule that the present sites break, or the setting that puts one of them out of use.
    // Empty if all is in order.
    QString broken;
    Kind kind = Kind::Feeds;
};

// Finds all connections of a design, placed or not: from each source to the parts of each IP that it serves, among the
// parts of one IP, among those placed in one group that must agree on a property, and what the design file connects. An
// unplaced supply belongs to no bank yet, so that nothing is connected to it. No two resources are connected twice.
//
// Parts of one IP and supplies of one bank form a chain instead of all pairs. Pairs that break a rule and are not
// neighbours in the chain are there as well, once for every two units or voltages that exclude each other. Each
// unplaced part is connected to the first placed one.
[[nodiscard]] std::vector<Connection> connectionsOf(
    const Device& device, const Design& design, const SettingStore& settings);

// Finds the connections of one resource with all pairs: of a source to the parts that it serves, of a part to its
// sources and to each other part of its IP, of a placed supply to each other of its bank, and those of the design file.
[[nodiscard]] std::vector<Connection> connectionsOf(
    const Device& device, const Design& design, const SettingStore& settings, int resource);

} // namespace mirn::zelengine
