// SPDX-License-Identifier: MIT
#pragma once

#include "generator/site.h"

#include <string>
#include <vector>

namespace mirn::zeldevicegenerator {

// Returns the device file as JSON, one site a line. `types` are its members about the types of resources.
[[nodiscard]] std::string deviceFile(const std::string& name, const std::string& drawing, const std::string& filter,
    const std::string& types, const std::vector<SiteKind>& kinds, const std::vector<Site>& sites);

// Returns the filter file: on each line the title of a kind in quotes and the id of a site.
[[nodiscard]] std::string filterFile(const std::vector<SiteKind>& kinds, const std::vector<Site>& sites);

} // namespace mirn::zeldevicegenerator
