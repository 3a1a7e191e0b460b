// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace mirn::zelchip {

// How the text before the cursor can go on.
struct Completion
{
    QStringList candidates; // for people to read; empty when nothing fits
    int start = 0; // `text` replaces all from here to the cursor
    QString text; // what all candidates have in common, written so that typing can go on
};

using Completer = std::function<Completion(const QString& textBeforeCursor)>;

} // namespace mirn::zelchip
