// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace mirn::zelchip {

// A way to write a value so that whoever reads the file gets the same text. What it cannot carry it refuses: it never
// changes or leaves out a character.
struct Quoting
{
    const char* name; // in templates
    const char* accepted; // what it can carry, for error messages
    std::optional<QString> (*quoted)(const QString& value); // nothing if it cannot carry the value
};

[[nodiscard]] const std::vector<Quoting>& quotings();

// Returns null if there is none of that name.
[[nodiscard]] const Quoting* findQuoting(const QString& name);

} // namespace mirn::zelchip
