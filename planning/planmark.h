// SPDX-License-Identifier: MIT
#pragma once

#include <QFlags>

namespace mirn::zelchipview {

// What PlanAids paints on the drawing. An open end is that of a stub.
enum class PlanMark { Candidate = 1, Connection = 2, OpenEnd = 4, Broken = 8 };
Q_DECLARE_FLAGS(PlanMarks, PlanMark)

} // namespace mirn::zelchipview
