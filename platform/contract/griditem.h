// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <QString>

namespace mirn::itemviewgui {

// The order of texts in lists and trees.
class ZELPLATFORM_EXPORT GridItem
{
public:
    // Three-way comparison in natural order: runs of digits compare as numbers of any length, everything else by code
    // unit, folded when `caseSensitivity` is Qt::CaseInsensitive. Negative, zero or positive; a total order, in which
    // numbers of the same value are told apart by their leading zeros ("7" before "07").
    [[nodiscard]] static int compareString(
        const QString& left, const QString& right, Qt::CaseSensitivity caseSensitivity);
};

} // namespace mirn::itemviewgui
