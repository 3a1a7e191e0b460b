// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelplanengine.h"

#include <QString>

#include <vector>

namespace mirn::zelchipview {

// What would follow if a resource were dropped on an element now.
struct DropPlan
{
    enum class Kind { Nothing, Place, Swap, Refused };

    Kind kind = Kind::Nothing;
    QString resource; // empty if nothing is dragged
    int site = -1; // element id
    QString other; // with which a swap exchanges the sites
    std::vector<zelplacement> placements; // that the drop would make
    QString command; // that it would send to the host
    QString refusal; // one sentence for users; empty if the engine does not say why
};

} // namespace mirn::zelchipview
