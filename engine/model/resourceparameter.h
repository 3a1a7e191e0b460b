// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <optional>

namespace mirn::zelengine {

// A parameter that every resource of a type has: a number within bounds, or one of a few numbers. Values are texts in a
// canonical spelling, so that equal values are equal texts.
struct ResourceParameter
{
    QString key; // in files and commands
    QString title; // for users
    QString unit;
    QString preset; // the value unless the design file or the user sets another
    double minimum = 0;
    double maximum = 0;
    QStringList choices; // if not empty, the only values allowed

    // Returns the value in its canonical spelling, rounded to thousandths: "100" for "100.0". Returns nothing if the
    // value is not allowed.
    [[nodiscard]] std::optional<QString> accepted(const QString& value) const;

    // Describes the allowed values, for example "a number from 10 to 500".
    [[nodiscard]] QString expectation() const;

    // Returns, for example, "100 MHz".
    [[nodiscard]] QString withUnit(const QString& value) const { return value + QLatin1Char(' ') + unit; }
};

} // namespace mirn::zelengine
