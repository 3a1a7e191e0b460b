// SPDX-License-Identifier: MIT
#include "tests/soak/gesture.h"

#include <QList>
#include <QRandomGenerator>

#include <algorithm>
#include <iterator>

namespace {

struct Description
{
    const char* name;
    int weight; // how often it comes
};

// By kind.
constexpr Description Descriptions[] = {{"begin", 0}, {"press", 3}, {"move", 6}, {"release", 3}, {"double-click", 3},
    {"wheel", 8}, {"key", 6}, {"mode", 4}, {"select-row", 6}, {"expand-row", 3}, {"press-row", 2}, {"move-on-row", 2},
    {"release-row", 2}, {"row-menu", 3}, {"filter-menu", 3}, {"drag-move", 4}, {"drag-leave", 2}, {"drop", 2},
    {"elapse", 3}, {"command", 10}, {"trigger", 5}, {"find", 2}, {"move-dock", 2}, {"resize", 2}, {"hide", 1},
    {"reopen", 1}, {"renew", 1}, {"close", 1}};
static_assert(std::size(Descriptions) == Gesture::KindCount);

// What only makes sense together: a band, a drag from the tree to the drawing.
const std::vector<std::vector<Gesture::Kind>>& phrases()
{
    using G = Gesture;
    static const std::vector<std::vector<Gesture::Kind>> all{{G::Press, G::Release}, {G::Press, G::Move, G::Release},
        {G::Press, G::Move, G::Move, G::Move, G::Release}, {G::SelectRow, G::DragMove, G::DragMove, G::Drop},
        {G::SelectRow, G::DragMove, G::DragMove, G::Elapse, G::DragMove, G::DragLeave},
        {G::PressRow, G::MoveOnRow, G::ReleaseRow, G::DragMove, G::Elapse, G::Drop}};
    return all;
}

} // namespace

Gestures randomGestures(unsigned seed, int count, int round)
{
    QRandomGenerator random(seed);
    std::vector<Gesture::Kind> lots;
    for (int kind = 0; kind < Gesture::KindCount; ++kind)
        lots.insert(lots.end(), static_cast<std::size_t>(Descriptions[kind].weight), static_cast<Gesture::Kind>(kind));
    Gestures gestures;
    const auto add = [&](Gesture::Kind kind) {
        if (gestures.size() % static_cast<std::size_t>(round) == 0)
            gestures.push_back({Gesture::Begin, {}});
        gestures.push_back({kind, {random.generate(), random.generate(), random.generate()}});
    };
    while (gestures.size() < static_cast<std::size_t>(count)) {
        if (random.bounded(3) > 0) {
            add(lots[static_cast<std::size_t>(random.bounded(static_cast<int>(lots.size())))]);
            continue;
        }
        for (const Gesture::Kind kind : phrases()[static_cast<std::size_t>(random.bounded(int(phrases().size())))])
            add(kind);
    }
    return gestures;
}

QByteArray toText(const Gestures& gestures)
{
    QByteArray text;
    for (const Gesture& gesture : gestures) {
        text += Descriptions[gesture.kind].name;
        for (const unsigned number : gesture.numbers)
            text += ' ' + QByteArray::number(number);
        text += '\n';
    }
    return text;
}

Gestures gesturesFrom(const QByteArray& text)
{
    Gestures gestures;
    const QList<QByteArray> lines = text.split('\n');
    for (const QByteArray& line : lines) {
        const QList<QByteArray> words = line.split(' ');
        const auto* const found = std::find_if(std::begin(Descriptions), std::end(Descriptions),
            [&](const Description& description) { return words.first() == description.name; });
        if (found == std::end(Descriptions) || words.size() != 4)
            continue;
        gestures.push_back({static_cast<Gesture::Kind>(found - std::begin(Descriptions)),
            {words[1].toUInt(), words[2].toUInt(), words[3].toUInt()}});
    }
    return gestures;
}
