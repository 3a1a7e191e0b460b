// SPDX-License-Identifier: MIT
#include "host/window/planninglegend.h"

#include <QPainter>
#include <QPixmap>

namespace mirn::zelchip {

using zelchipview::PlanAids;

namespace {

constexpr QSize SiteSample(11, 11); // device-independent pixels
constexpr QSize LineSample(18, 9);

QPixmap sampleOf(PlanAids::Mark mark, qreal ratio)
{
    const QSize size = mark == PlanAids::Mark::Candidate ? SiteSample : LineSample;
    QPixmap pixmap(size * ratio);
    pixmap.setDevicePixelRatio(ratio);
    QPainter painter(&pixmap);
    PlanAids::paintSample(painter, QRectF(QPointF(), size), mark);
    return pixmap;
}

} // namespace

PlanningLegend::PlanningLegend(PlanAids* aids, Legend* legend)
    : QObject(aids)
    , m_aids(aids)
    , m_legend(legend)
{
    connect(aids, &PlanAids::marksChanged, this, &PlanningLegend::show);
    show();
}

PlanningLegend::~PlanningLegend()
{
    if (m_legend)
        m_legend->setPassingEntries({});
}

void PlanningLegend::show()
{
    if (!m_legend)
        return;
    using Mark = PlanAids::Mark;
    const PlanAids::Marks marks = m_aids->marks();
    QList<Legend::Entry> entries;
    const auto add = [&](Mark mark, const QString& word, const QString& tip) {
        if (marks.testFlag(mark))
            entries.append({sampleOf(mark, m_legend->devicePixelRatioF()), word, tip});
    };
    add(Mark::Candidate, tr("candidate"), tr("Sites that would take the selected resource"));
    add(Mark::Connection, tr("connection"), tr("Lines to what a resource needs and feeds"));
    add(Mark::OpenEnd, tr("not placed"), tr("Lines towards the nearest site for what is not placed"));
    add(Mark::Broken, tr("broken"), tr("Lines that break a rule, or lead to a site that is out of use"));
    m_legend->setPassingEntries(entries);
}

} // namespace mirn::zelchip
