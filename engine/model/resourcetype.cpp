// SPDX-License-Identifier: MIT
#include "engine/model/resourcetype.h"

#include <algorithm>
#include <utility>

namespace mirn::zelengine {

namespace {

ResourceParameter frequency(double minimum, double maximum)
{
    return {QStringLiteral("frequency"), QStringLiteral("Frequency"), QStringLiteral("MHz"), QStringLiteral("100"),
        minimum, maximum, {}};
}

ResourceParameter rate()
{
    const QStringList choices{QStringLiteral("1.25"), QStringLiteral("2.5"), QStringLiteral("3.125"),
        QStringLiteral("5"), QStringLiteral("6.25")};
    return {QStringLiteral("rate"), QStringLiteral("Rate per lane"), QStringLiteral("Gb/s"), QStringLiteral("2.5"),
        1.25, 6.25, choices};
}

ResourceType contractType(int code, const QString& title)
{
    ResourceType type;
    type.name = contractTypeNames().at(code);
    type.title = title;
    type.number = code;
    type.code = code;
    return type;
}

ResourceType source(int code, const QString& title, ResourceParameter parameter)
{
    ResourceType type = contractType(code, title);
    type.feeds = true;
    type.mustReach = true;
    type.parameters.push_back(std::move(parameter));
    return type;
}

ResourceTypes makeStandardTypes()
{
    constexpr double LowestPllFrequency = 5;
    constexpr double HighestPllFrequency = 800;
    constexpr double LowestReferenceFrequency = 10;
    constexpr double HighestReferenceFrequency = 500;
    int code = 0;
    ResourceType ip = contractType(code++, QStringLiteral("IP"));
    ip.parameters.push_back(rate());
    ResourceType channel = contractType(code++, QStringLiteral("SerDes channel"));
    channel.sharesUnit = true;
    const auto channels = std::make_shared<const ResourceType>(std::move(channel));
    ip.parts = channels.get();
    const ResourceType reference = source(
        code++, QStringLiteral("Reference clock"), frequency(LowestReferenceFrequency, HighestReferenceFrequency));
    const ResourceType pll = source(code++, QStringLiteral("PLL"), frequency(LowestPllFrequency, HighestPllFrequency));
    ResourceType supply = contractType(code++, QStringLiteral("I/O supply"));
    supply.agreesOn = QStringLiteral("voltage");
    supply.properties.append(supply.agreesOn);
    return {std::make_shared<const ResourceType>(std::move(ip)), channels,
        std::make_shared<const ResourceType>(reference), std::make_shared<const ResourceType>(pll),
        std::make_shared<const ResourceType>(std::move(supply))};
}

} // namespace

const ResourceParameter* ResourceType::parameter(const QString& key) const
{
    const auto it = std::find_if(
        parameters.begin(), parameters.end(), [&key](const ResourceParameter& each) { return each.key == key; });
    return it == parameters.end() ? nullptr : &*it;
}

const ResourceTypes& standardTypes()
{
    static const ResourceTypes types = makeStandardTypes();
    return types;
}

const ResourceType* findType(const ResourceTypes& types, const QString& name)
{
    const auto it = std::find_if(types.begin(), types.end(), [&name](const auto& type) { return type->name == name; });
    return it == types.end() ? nullptr : it->get();
}

QStringList namesOf(const ResourceTypes& types)
{
    QStringList names;
    for (const auto& type : types)
        names.append(type->name);
    return names;
}

const QStringList& contractTypeNames()
{
    static const QStringList names{QStringLiteral("IP"), QStringLiteral("DCUCHANNEL"), QStringLiteral("EXTREF"),
        QStringLiteral("PLL"), QStringLiteral("UVCCIO")};
    return names;
}

const std::vector<ResourceParameter>& parametersOf(const ResourceType* type)
{
    static const std::vector<ResourceParameter> none;
    return type ? type->parameters : none;
}

} // namespace mirn::zelengine
