// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

namespace mirn::zelimporter {

// A text as JSON has it, with its quotes.
[[nodiscard]] QByteArray jsonText(const QString& text);

} // namespace mirn::zelimporter
