// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArrayList>
#include <QElapsedTimer>

#include <algorithm>
#include <functional>

namespace zeltest {

// The shortest list of steps that still goes wrong, as far as it is found in so many milliseconds: leaves out ever
// smaller parts of it.
inline QByteArrayList shortened(
    QByteArrayList steps, const std::function<bool(const QByteArrayList&)>& goesWrong, qint64 limit)
{
    QElapsedTimer clock;
    clock.start();
    for (auto part = std::max<qsizetype>(steps.size() / 2, 1); part > 0 && clock.elapsed() < limit;) {
        bool isShorter = false;
        for (qsizetype at = 0; at < steps.size() && clock.elapsed() < limit;) {
            const QByteArrayList fewer = steps.mid(0, static_cast<int>(at)) + steps.mid(static_cast<int>(at + part));
            const bool isNeeded = fewer.isEmpty() || !goesWrong(fewer);
            isShorter = isShorter || !isNeeded;
            if (isNeeded)
                at += part;
            else
                steps = fewer;
        }
        if (!isShorter)
            part /= 2;
    }
    return steps;
}

} // namespace zeltest
