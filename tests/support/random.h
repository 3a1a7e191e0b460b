// SPDX-License-Identifier: MIT
#pragma once

#include <QRandomGenerator>

namespace zeltest {

// The same numbers every time.
class Random
{
public:
    double upTo(double limit) { return m_generator.bounded(limit); }
    int below(int limit) { return m_generator.bounded(limit); }
    unsigned int color() { return m_generator.generate() & 0xffffffU; }

private:
    QRandomGenerator m_generator{20240229};
};

} // namespace zeltest
