// SPDX-License-Identifier: MIT
#pragma once

#include "generator/site.h"

#include <string>
#include <vector>

namespace mirn::zeldevicegenerator {

struct SampleDrawing
{
    std::string svg;
    std::vector<std::string> misfits; // labels larger than their boxes
};

[[nodiscard]] SampleDrawing sampleDrawing(const std::vector<Site>& sites);

} // namespace mirn::zeldevicegenerator
