// SPDX-License-Identifier: MIT
#include "benchmarks/results/paintcounter.h"

#include <QPaintEvent>

namespace zelbench {

void PaintCounter::watch(QObject* widget)
{
    widget->installEventFilter(this);
}

bool PaintCounter::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::Paint) {
        ++m_count.paints;
        for (const QRect& rect : static_cast<QPaintEvent*>(event)->region())
            m_count.pixels += rect.width() * rect.height();
    }
    return QObject::eventFilter(watched, event);
}

} // namespace zelbench
