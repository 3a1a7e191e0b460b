// SPDX-License-Identifier: MIT
#pragma once

#include <string>
#include <vector>

namespace mirn::zelengine {

class Design;
class Device;

// The rows of the usage table: per kind of site that takes a resource how many are used and how many there are. A site
// that takes a whole IP counts as used when anything of its group is.
[[nodiscard]] std::vector<std::vector<std::string>> usageRows(const Device& device, const Design& design);

[[nodiscard]] std::vector<std::string> usageHeader();

} // namespace mirn::zelengine
