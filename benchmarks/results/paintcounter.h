// SPDX-License-Identifier: MIT
#pragma once

#include <QObject>

#include <utility>

namespace zelbench {

// Counts the paint events of one widget and the pixels that they cover.
class PaintCounter final : public QObject
{
public:
    struct Count
    {
        int paints = 0;
        int pixels = 0;
    };

    void watch(QObject* widget);

    // Returns the counts since the last call.
    Count take() { return std::exchange(m_count, {}); }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    Count m_count;
};

} // namespace zelbench
