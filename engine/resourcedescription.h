// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

#include <vector>

namespace mirn::zelengine {

class Design;
class Device;
struct Connection;
struct Problem;

// Returns lines for users about a resource: its path, its kind and place, what it feeds or is fed by, and those of the
// problems that concern it.
[[nodiscard]] QStringList describeResource(const Device& device, const Design& design,
    const std::vector<Connection>& connections, const std::vector<Problem>& problems, int resource);

} // namespace mirn::zelengine
