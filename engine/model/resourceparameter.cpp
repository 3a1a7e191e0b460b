// SPDX-License-Identifier: MIT
#include "engine/model/resourceparameter.h"

#include <algorithm>

namespace mirn::zelengine {

namespace {

constexpr int Decimals = 3;

const QString FrequencyKey = QStringLiteral("frequency");
const QString RateKey = QStringLiteral("rate");

ResourceParameter frequency(double minimum, double maximum, const QString& preset)
{
    return {FrequencyKey, QStringLiteral("Frequency"), QStringLiteral("MHz"), preset, minimum, maximum, {}};
}

ResourceParameter rate(const QStringList& choices, const QString& preset)
{
    return {RateKey, QStringLiteral("Rate per lane"), QStringLiteral("Gb/s"), preset, choices.first().toDouble(),
        choices.last().toDouble(), choices};
}

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

const std::vector<ResourceParameter>& parametersOf(ResourceType type)
{
    static const std::vector<ResourceParameter> none;
    static const std::vector<ResourceParameter> ofPll{frequency(5, 800, QStringLiteral("100"))};
    static const std::vector<ResourceParameter> ofReference{frequency(10, 500, QStringLiteral("100"))};
    static const std::vector<ResourceParameter> ofIp{
        rate({QStringLiteral("1.25"), QStringLiteral("2.5"), QStringLiteral("3.125"), QStringLiteral("5"),
                 QStringLiteral("6.25")},
            QStringLiteral("2.5"))};
    switch (type) {
    case ResourceType::Ip:
        return ofIp;
    case ResourceType::ExtRef:
        return ofReference;
    case ResourceType::Pll:
        return ofPll;
    case ResourceType::Folder:
    case ResourceType::DcuChannel:
    case ResourceType::Uvccio:
        break;
    }
    return none;
}

const ResourceParameter* findParameter(ResourceType type, const QString& key)
{
    const std::vector<ResourceParameter>& all = parametersOf(type);
    const auto it = std::find_if(
        all.begin(), all.end(), [&key](const ResourceParameter& parameter) { return parameter.key == key; });
    return it == all.end() ? nullptr : &*it;
}

const QStringList& parameterKeys()
{
    static const QStringList keys{FrequencyKey, RateKey};
    return keys;
}

} // namespace mirn::zelengine
