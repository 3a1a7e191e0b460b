// SPDX-License-Identifier: MIT
#pragma once

#include "host/widgets/legend.h"
#include "planning/planaids.h"

#include <QObject>
#include <QPointer>

namespace mirn::zelchip {

// Explains in the legend what the planning aids have painted, as long as it is there. It is a child of the aids.
class PlanningLegend final : public QObject
{
    Q_OBJECT
public:
    PlanningLegend(zelchipview::PlanAids* aids, Legend* legend);
    ~PlanningLegend() override;

private:
    void show();

    zelchipview::PlanAids* const m_aids;
    const QPointer<Legend> m_legend;
};

} // namespace mirn::zelchip
