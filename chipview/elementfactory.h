// SPDX-License-Identifier: MIT
#pragma once

#include <memory>

class QGraphicsItem;
class zel_SingleGraphItem;

namespace mirn::zelchipview {

class ZELGraphicItemAttribute;

// Returns the attribute of a record, complete; null for a record that is not drawn, or whose class does not match its
// kind.
[[nodiscard]] std::unique_ptr<ZELGraphicItemAttribute> makeAttribute(const zel_SingleGraphItem& record, int loadNumber);

// Returns a new item of a kind (a zelgraphic_kind), which looks for its attribute under its load number. The caller
// owns it.
[[nodiscard]] QGraphicsItem* makeItem(int kind, int loadNumber);

} // namespace mirn::zelchipview
