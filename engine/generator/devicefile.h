// SPDX-License-Identifier: MIT
#pragma once

#include "engine/generator/site.h"

#include <string>
#include <vector>

namespace mirn::zeldevicegenerator {

// The device file as JSON, one site a line.
[[nodiscard]] std::string deviceFile(const std::string& name, const std::string& drawing, const std::string& filter,
    const std::vector<SiteKind>& kinds, const std::vector<Site>& sites);

// The filter file: the kind's title in quotes and a site's id on each line.
[[nodiscard]] std::string filterFile(const std::vector<SiteKind>& kinds, const std::vector<Site>& sites);

} // namespace mirn::zeldevicegenerator
