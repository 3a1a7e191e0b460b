// SPDX-License-Identifier: MIT
#pragma once

#include "engine/resourcetype.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace mirn::zelengine {

// Something that can be configured about every resource of a type: a number between bounds, or one of a few numbers.
// Values are texts in one spelling, so that equal values are equal texts.
struct ResourceParameter
{
    QString key; // in files and commands
    QString title; // for people
    QString unit;
    QString preset; // the value where nobody says another
    double minimum = 0;
    double maximum = 0;
    QStringList choices; // when there are some, nothing else is allowed

    // The value in its one spelling, to thousandths: "100" for "100.0". Nothing when it is not allowed.
    [[nodiscard]] std::optional<QString> accepted(const QString& value) const;

    // What is allowed: "a number from 10 to 500".
    [[nodiscard]] QString expectation() const;

    // "100 MHz"
    [[nodiscard]] QString withUnit(const QString& value) const { return value + QLatin1Char(' ') + unit; }
};

// Empty for what cannot be configured.
[[nodiscard]] const std::vector<ResourceParameter>& parametersOf(ResourceType type);

// Null when resources of the type have none with this key.
[[nodiscard]] const ResourceParameter* findParameter(ResourceType type, const QString& key);

// The keys that any type has.
[[nodiscard]] const QStringList& parameterKeys();

} // namespace mirn::zelengine
