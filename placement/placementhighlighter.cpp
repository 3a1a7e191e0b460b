// SPDX-License-Identifier: MIT
#include "placement/placementhighlighter.h"

#include <QList>
#include <QTimer>

namespace mirn::zelchipview {

PlacementHighlighter::PlacementHighlighter(QTimer* timer)
    : m_timer(timer)
{ }

void PlacementHighlighter::arm(int site)
{
    m_hoveredSite = site;
    m_timer->start(RestTime);
}

int PlacementHighlighter::finishCountdown()
{
    m_timer->stop();
    return m_hoveredSite;
}

void PlacementHighlighter::show(const QList<int>& sites)
{
    m_highlighted.assign(QSet<int>(sites.begin(), sites.end()));
}

void PlacementHighlighter::clear()
{
    m_timer->stop();
    m_highlighted.clear();
    m_hoveredSite = NoSite;
}

} // namespace mirn::zelchipview
