// SPDX-License-Identifier: MIT
#include "benchmarks/results/targets.h"

#include <utility>

namespace zelbench {

const std::vector<Target>& targets()
{
    using Unit = Target::Unit;
    constexpr double None = Target::None;
    static const std::vector<Target> all = {
        {"full repaint at fit / bare QPainter", "full repaint at fit", "", Unit::Ratio, 0.13, 0.11},
        {"full repaint at 4x / bare QPainter", "full repaint at 4x", "", Unit::Ratio, 0.20, 0.27},
        {"full repaint at 30x / bare QPainter", "full repaint at 30x", "", Unit::Ratio, 0.40, 0.30},
        {"full repaint at fit by two threads / bare QPainter", "full repaint by two threads", "", Unit::Ratio, 0.13,
            0.065},
        {"  the same at fit, a host holds every attribute / without", "full repaint, handed out", "", Unit::Ratio, 1.05,
            None},
        {"pan by 50 pixels at 4x / bare QPainter at 4x", "pan by 50 pixels at 4x", "", Unit::Ratio, 0.06, 0.012},
        {"repaint with nothing changed / bare at fit", "repaint, nothing changed", "", Unit::Ratio, 0.005, 0.001},
        {"500 probable sites appear at fit / items one by one", "highlight 500 sites", "", Unit::Ratio, 0.05, 0.0125},
        {"select one element at fit", "select one element", "", Unit::Milliseconds, 4, 4},
        {"refresh of 1000 dynamic values / walking all items", "refresh 1000 dynamic values", "", Unit::Ratio, 0.005,
            0.0005},
        {"rubber band over all / QGraphicsScene::items by shape", "rubber band over everything", "", Unit::Ratio, 0.005,
            0.005},
        {"drag move, dispatched", "drag move at 4x", "", Unit::Microseconds, 10, 15},
        {"SVG text to records / QXmlStreamReader", "SVG text to records", "", Unit::Ratio, 0.60, 0.60},
        {"second load, from the working file / first parse", "records from the working file", "", Unit::Ratio, 0.02,
            0.02},
        {"from start of loading to first picture", "open", "", Unit::Seconds, 0.5, 1.3},
        {"the second time", "open again", "", Unit::Seconds, 0.5, 0.9},
        {"closing the window and the controller", "open", "close", Unit::Seconds, None, 0.7},
        {"memory per element, everything included", "memory", "bytes", Unit::Kilobytes, 1.0, 1.0},
        {"  the most while opening", "memory", "most bytes", Unit::Kilobytes, 1.25, 1.25},
        {"pixels that differ from the items, at fit", "pictures", "items at fit", Unit::Count, 0, 0},
        {"pixels that differ from the items, at 4x", "pictures", "items at 4x", Unit::Count, 0, 0},
        {"pixels that differ from the items, at 30x", "pictures", "items at 30x", Unit::Count, 0, 0},
        {"  the same, many states, at fit", "pictures", "states at fit", Unit::Count, 0, 0},
        {"  the same, many states, at 4x", "pictures", "states at 4x", Unit::Count, 0, 0},
        {"  the same, many states, at 30x", "pictures", "states at 30x", Unit::Count, 0, 0},
        {"full repaint at fit, planning aids off / without", "full repaint, aids off", "", Unit::Ratio, 1.02, 1.02},
        {"full repaint at fit, names that have no room / without", "full repaint, names without room", "", Unit::Ratio,
            1.02, 1.02},
        {"pan with as many connections / without", "pan, all connections", "", Unit::Ratio, 1.2, 1.2},
        {"click with as many connections / without", "click, all connections", "", Unit::Ratio, 1.2, 1.2},
        {"full repaint with as many connections", "full repaint, all connections", "", Unit::Seconds, 0.15, 1.5},
        {"10,000 candidates appear", "candidates", "", Unit::Seconds, 0.05, 0.05},
        {"refresh of 20,000 resources / bare QTreeWidget", "refresh the tree", "", Unit::Ratio, 2, 2},
        {"expandIP(), per row", "expand a branch", "per row", Unit::Microseconds, 0.5, 0.5},
        {"refresh where all fills change, per element", "refresh, all fills change", "per element", Unit::Microseconds,
            0.5, 0.5},
        {"tick of all kinds, per element", "tick all kinds", "per element", Unit::Microseconds, 0.5, 0.5},
        {"from program start to a snapshot, processor time", "snapshot", "", Unit::Seconds, None, None, 3.5, 7},
        {"paint events while idle for half a second", "rest", "idle paints", Unit::Count, 0, 0},
    };
    return all;
}

std::optional<double> limitOf(const Target& target, int elements)
{
    const std::pair<int, double> limits[] = {
        {100'000, target.at100k}, {1'000'000, target.at1M}, {1'200'000, target.at1200k}, {2'300'000, target.at2300k}};
    for (const auto& [size, limit] : limits) {
        if (size == elements && limit != Target::None)
            return limit;
    }
    return std::nullopt;
}

} // namespace zelbench
