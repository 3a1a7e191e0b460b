// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>

namespace mirn::zelchip {

// Translates a text of the program in functions that belong to no QObject.
[[nodiscard]] inline QString tr(const char* text)
{
    return QCoreApplication::translate("zelchip", text);
}

} // namespace mirn::zelchip
