// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

class QString;

namespace mirn::zelchipview {

struct GraphicItemDynamicAttribute;
class ZELGraphicItemAttribute;

// Returns the element id that a key of the engine's dynamic values stands for, or nothing if the key is not a decimal
// number in the form that QString::number() writes.
[[nodiscard]] std::optional<int> elementIdOf(const QString& key);

// Writes the engine's colour and tooltip into an attribute. Where the engine has none, restores the drawing's, if the
// element's kind can do so. Returns whether anything changed.
bool applyDynamicValues(ZELGraphicItemAttribute& attribute, const GraphicItemDynamicAttribute& values);

} // namespace mirn::zelchipview
