// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace mirn::zelengine {

class Design;
class Device;

// Returns the rows of the usage table: for each kind of site that accepts a resource, how many are used and how many
// exist. A site that accepts a whole IP counts as used if any site of its group is.
[[nodiscard]] std::vector<std::vector<std::string>> usageRows(const Device& device, const Design& design);

[[nodiscard]] std::vector<std::string> usageHeader();

} // namespace mirn::zelengine
