// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelplanengine.h"

#include <QString>

#include <vector>

namespace mirn::zelchipview {

// What would follow if a resource were dropped on an element now.
struct DropPlan
{
    // Nothing: there is no element or no resource, or the resource is where it was taken from. Swap: the resource of
    // the element goes where the dropped one is now.
    enum class Kind { Nothing, Place, Swap, Refused };

    Kind kind = Kind::Nothing; // what a drop would do
    QString resource; // that is dragged; empty if there is none
    int site = -1; // element id; -1 if there is no element
    QString other; // with which a swap exchanges the sites
    std::vector<zelplacement> placements; // that the drop would make
    QString command; // that it would send to the host
    QString refusal; // one sentence for users; empty if the engine does not say why
};

} // namespace mirn::zelchipview
