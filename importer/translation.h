// SPDX-License-Identifier: MIT
#pragma once

#include <QCoreApplication>

namespace mirn::zelimporter {

// Translates a text of the import.
[[nodiscard]] inline QString tr(const char* text)
{
    return QCoreApplication::translate("zelimporter", text);
}

} // namespace mirn::zelimporter
