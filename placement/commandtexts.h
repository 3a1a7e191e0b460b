// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelchipview::commandtexts {

// These return the Tcl commands for the host. The braces make a resource name one word, whatever blanks or brackets it
// contains; nothing else in it is escaped. `site` is an element id in decimal.
[[nodiscard]] QString place(const QString& resource, const QString& site);
[[nodiscard]] QString swap(const QString& resource, const QString& other);
[[nodiscard]] QString reset(const QString& resource);
[[nodiscard]] QString remove(const QString& resource);

} // namespace mirn::zelchipview::commandtexts
