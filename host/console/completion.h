// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <functional>

namespace mirn::zelchip {

// The possible continuations of the text before the cursor.
struct Completion
{
    QStringList candidates; // readable by users; empty if nothing fits
    int start = 0; // `text` replaces everything from here to the cursor
    QString text; // the common beginning of all candidates, in a form in which typing can continue
};

using Completer = std::function<Completion(const QString& textBeforeCursor)>;

} // namespace mirn::zelchip
