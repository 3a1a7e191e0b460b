// SPDX-License-Identifier: MIT
#include "engine/model/resourceparameter.h"

namespace mirn::zelengine {

namespace {

constexpr int Decimals = 3;

QString spelled(double value)
{
    QString text = QString::number(value, 'f', Decimals);
    while (text.endsWith(QLatin1Char('0')))
        text.chop(1);
    if (text.endsWith(QLatin1Char('.')))
        text.chop(1);
    return text;
}

} // namespace

std::optional<QString> ResourceParameter::accepted(const QString& value) const
{
    bool isNumber = false;
    const double number = value.toDouble(&isNumber);
    if (!isNumber || !(number >= minimum && number <= maximum)) // this form also refuses NaN
        return std::nullopt;
    const QString text = spelled(number);
    return choices.isEmpty() || choices.contains(text) ? std::optional(text) : std::nullopt;
}

QString ResourceParameter::expectation() const
{
    if (choices.isEmpty())
        return QStringLiteral("a number from %1 to %2").arg(spelled(minimum), spelled(maximum));
    const QStringList others = choices.mid(0, choices.size() - 1);
    return others.join(QStringLiteral(", ")) + QStringLiteral(" or ") + choices.last();
}

} // namespace mirn::zelengine
