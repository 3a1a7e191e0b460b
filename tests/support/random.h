// SPDX-License-Identifier: MIT
#pragma once

#include <QRandomGenerator>

namespace zeltest {

// The same numbers every time.
class Random
{
public:
    explicit Random(unsigned int seed = 20240229)
        : m_generator(seed)
    { }

    double upTo(double limit) { return m_generator.bounded(limit); }
    int below(int limit) { return m_generator.bounded(limit); }
    unsigned int color() { return m_generator.generate() & 0xffffffU; }
    // One of a list that has some.
    template <typename List> auto oneOf(const List& list) { return list[below(static_cast<int>(list.size()))]; }

private:
    QRandomGenerator m_generator;
};

} // namespace zeltest
