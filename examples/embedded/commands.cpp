// SPDX-License-Identifier: MIT
#include "commands.h"

#include "engine/referenceengine.h"

#include <QRegularExpression>

using mirn::zelengine::ReferenceEngine;

QString runCommand(const QString& command, ReferenceEngine& engine)
{
    static const QRegularExpression Place(QStringLiteral("^zel_resource place -rsc \\{(.*)\\} -id (\\d+)$"));
    static const QRegularExpression Other(QStringLiteral("^zel_resource (reset|remove) -ip \\{(.*)\\}$"));
    const QRegularExpressionMatch place = Place.match(command);
    if (place.hasMatch())
        return engine.place(place.captured(1), place.captured(2).toInt()).sentence();
    const QRegularExpressionMatch other = Other.match(command);
    if (!other.hasMatch())
        return QStringLiteral("Unknown command");
    const auto change
        = other.captured(1) == QStringLiteral("reset") ? &ReferenceEngine::reset : &ReferenceEngine::remove;
    return (engine.*change)(other.captured(2)).sentence();
}
