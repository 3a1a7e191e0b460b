// SPDX-License-Identifier: MIT
#include "engine/input/shortvalues.h"

#include <QStringList>

namespace mirn::zelengine {

namespace {

constexpr int MaximumValueLength = 80; // characters of a quoted value in a message
constexpr int MaximumMessageLength = 1000;

} // namespace

QString withShortValues(const QString& message)
{
    QStringList parts = message.split(QLatin1Char('"'));
    for (int i = 1; i < parts.size(); i += 2) {
        if (parts.at(i).size() > MaximumValueLength)
            parts[i] = parts.at(i).left(MaximumValueLength) + QStringLiteral("...");
    }
    const QString result = parts.join(QLatin1Char('"'));
    // The reason is at the beginning or at the end of the message, so the middle can go.
    return result.size() <= MaximumMessageLength
        ? result
        : result.left(MaximumMessageLength / 2) + QStringLiteral("...") + result.right(MaximumMessageLength / 2);
}

} // namespace mirn::zelengine
