// SPDX-License-Identifier: MIT
#include "platform/svg/reading/chipattributes.h"

#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/limits.h"
#include "platform/svg/base/number.h"

#include <charconv>
#include <cmath>

namespace mirn::zelsvg {

namespace {

void failValue(Diagnostics& diagnostics, std::string_view name, std::string_view value, std::string_view expected)
{
    std::string message = "found ";
    message.append(name).append("=").append(quoted(value)).append(", expected ").append(expected);
    diagnostics.failIn(value, message);
}

[[nodiscard]] bool parseNumber(std::string_view text, double& value)
{
    text = trimmed(text);
    const char* end = text.data() + text.size();
    return scanNumber(text.data(), end, value) == end && !text.empty() && std::fabs(value) <= LargestNumber;
}

[[nodiscard]] std::optional<int> parseInteger(std::string_view text)
{
    text = trimmed(text);
    int value = 0;
    const auto [stop, code] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (code != std::errc() || stop != text.data() + text.size())
        return std::nullopt;
    return value;
}

void readPositive(
    const Element& element, AttributeName name, std::string_view text, Diagnostics& diagnostics, double& target)
{
    double value = 0.0;
    if (!element.has(name))
        return;
    if (parseNumber(element.value(name), value) && value > 0.0)
        target = value;
    else
        failValue(diagnostics, text, element.value(name), "a number above 0");
}

// Reads one end of a layer's range; a missing one is open.
void readBound(
    const Element& element, AttributeName name, std::string_view text, Diagnostics& diagnostics, double& target)
{
    double value = 0.0;
    if (!element.has(name))
        return;
    if (parseNumber(element.value(name), value))
        target = value;
    else
        failValue(diagnostics, text, element.value(name), "a number");
}

} // namespace

GivenLimits readZoomParameters(const Element& root, Diagnostics& diagnostics, zel_Parameter& parameter)
{
    zel_Parameter read = parameter;
    readPositive(root, AttributeName::TovanelInitialScale, "tovanel:initial-scale", diagnostics, read.initialScale);
    readPositive(root, AttributeName::TovanelMinimumScale, "tovanel:minimum-scale", diagnostics, read.minimumScale);
    readPositive(root, AttributeName::TovanelMaximumScale, "tovanel:maximum-scale", diagnostics, read.maximumScale);
    readPositive(root, AttributeName::TovanelScaleStep, "tovanel:scale-step", diagnostics, read.scaleStep);
    const GivenLimits given{root.has(AttributeName::TovanelMinimumScale), root.has(AttributeName::TovanelMaximumScale)};
    if (given.minimum && given.maximum && read.minimumScale > read.maximumScale)
        failValue(diagnostics, "tovanel:minimum-scale", root.value(AttributeName::TovanelMinimumScale),
            "at most tovanel:maximum-scale");
    if (diagnostics.hasFailed())
        return {};
    parameter = read;
    return given;
}

void readLayerRange(const Element& element, Diagnostics& diagnostics, zel_Parameter& parameter)
{
    const std::optional<int> number = parseInteger(element.value(AttributeName::LayerNumber));
    RangeScale range{-LargestNumber, LargestNumber};
    if (!number)
        failValue(diagnostics, "number", element.value(AttributeName::LayerNumber), "the layer's whole number");
    readBound(element, AttributeName::LayerMinimum, "minimum", diagnostics, range.minimum);
    readBound(element, AttributeName::LayerMaximum, "maximum", diagnostics, range.maximum);
    if (range.minimum > range.maximum)
        failValue(diagnostics, "minimum", element.value(AttributeName::LayerMinimum), "at most the layer's maximum");
    if (!diagnostics.hasFailed() && !parameter.layerRanges.emplace(*number, range).second)
        failValue(diagnostics, "number", element.value(AttributeName::LayerNumber), "each layer once");
}

std::optional<int> readLayer(const Element& element, Diagnostics& diagnostics)
{
    if (!element.has(AttributeName::TovanelLayer))
        return std::nullopt;
    const std::string_view value = element.value(AttributeName::TovanelLayer);
    const std::optional<int> layer = parseInteger(value);
    if (!layer)
        failValue(diagnostics, "tovanel:layer", value, "a whole number");
    return layer;
}

std::optional<int> readId(const Element& element, Diagnostics& diagnostics)
{
    if (!element.has(AttributeName::TovanelId))
        return std::nullopt;
    const std::string_view value = element.value(AttributeName::TovanelId);
    const std::optional<int> id = parseInteger(value);
    if (id && *id >= 0)
        return id;
    failValue(diagnostics, "tovanel:id", value, "a whole number from 0 to 2147483647");
    return std::nullopt;
}

bool readFlag(const Element& element, Diagnostics& diagnostics)
{
    if (!element.has(AttributeName::TovanelFlag))
        return false;
    const std::string_view value = trimmed(element.value(AttributeName::TovanelFlag));
    if (value != "true" && value != "false")
        failValue(diagnostics, "tovanel:flag", value, "true or false");
    return value == "true";
}

} // namespace mirn::zelsvg
