// SPDX-License-Identifier: MIT
#pragma once

#include <optional>

class QString;

namespace mirn::zelchipview {

struct GraphicItemDynamicAttribute;
class ZELGraphicItemAttribute;

// The element that a key of the engine's dynamic values names: an id in decimal, as QString::number() writes it.
[[nodiscard]] std::optional<int> elementIdOf(const QString& key);

// Writes the engine's colour and tooltip into an attribute, or the drawing's where the engine has none. Returns whether
// anything changed.
bool applyDynamicValues(ZELGraphicItemAttribute& attribute, const GraphicItemDynamicAttribute& values);

} // namespace mirn::zelchipview
