// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelparameter.h"
#include "platform/svg/records/recordstore.h"

#include <string>
#include <vector>

namespace mirn::zelsvg {

// The result of reading a drawing, from the drawing itself or from its working file.
struct Drawing
{
    RecordStore records;
    zel_Parameter parameter;
    std::vector<std::string> warnings;
};

} // namespace mirn::zelsvg
