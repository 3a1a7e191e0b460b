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
        return engine.place(place.captured(1), place.captured(2).toInt());
    const QRegularExpressionMatch other = Other.match(command);
    if (!other.hasMatch())
        return QStringLiteral("unknown command");
    return other.captured(1) == QStringLiteral("reset") ? engine.reset(other.captured(2))
                                                        : engine.remove(other.captured(2));
}
