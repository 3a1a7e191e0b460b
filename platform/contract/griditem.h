// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QString>

namespace mirn::itemviewgui {

// The order of texts in lists and trees.
class ZELPLATFORM_EXPORT GridItem
{
public:
    // Compares two texts in natural order: runs of digits compare as numbers of any length, everything else compares by
    // code unit, folded if `caseSensitivity` is Qt::CaseInsensitive. Returns a negative number, zero or a positive
    // number. The order is total: numbers of the same value are told apart by their leading zeros ("7" before "07").
    [[nodiscard]] static int compareString(
        const QString& left, const QString& right, Qt::CaseSensitivity caseSensitivity);
};

} // namespace mirn::itemviewgui
