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
    int from = -1; // the clock source, else the one that comes first
    int to = -1;
    // One sentence for users: the rule that the present sites break, or the setting that puts one of them out of use.
    // Empty if all is in order.
    QString broken;
};

// Finds all connections of a design, placed or not: from each clock source to the channels of each IP that it serves,
// among the channels of one IP, and among the placed supplies of one bank. An unplaced supply belongs to no bank yet,
// so that nothing is connected to it.
//
// Channels of one IP and supplies of one bank form a chain instead of all pairs. Pairs that break a rule and are not
// neighbours in the chain are there as well, once for every two units or voltages that exclude each other. Each
// unplaced channel is connected to the first placed one.
[[nodiscard]] std::vector<Connection> connectionsOf(
    const Device& device, const Design& design, const SettingStore& settings);

// Finds the connections of one resource with all pairs: of a clock source to the channels that it serves, of a channel
// to its clock sources and to each other channel of its IP, of a placed supply to each other of its bank.
[[nodiscard]] std::vector<Connection> connectionsOf(
    const Device& device, const Design& design, const SettingStore& settings, int resource);

} // namespace mirn::zelengine
