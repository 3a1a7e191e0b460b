// SPDX-License-Identifier: MIT
#include "engine/resourcetypereader.h"

#include "engine/input/jsonnode.h"
#include "engine/model/resourcename.h"

#include <algorithm>
#include <limits>
#include <memory>
#include <utility>

namespace mirn::zelengine {

namespace {

const QString SameUnitRule = QStringLiteral("same-unit");
const QString ReachableRule = QStringLiteral("reachable");
const QString AgreeRule = QStringLiteral("agree");
const QString AtMostRule = QStringLiteral("at-most");

class ResourceTypeReader
{
public:
    [[nodiscard]] ResourceTypes read(const JsonNode& types, const JsonNode& rules);

private:
    void readType(const JsonNode& node);
    void connectParts(const JsonNode& node, ResourceType& type) const;
    static void checkParts(const JsonNode& node, const ResourceType& type);
    [[nodiscard]] int codeOf(const JsonNode& node) const;
    void readKeys(const JsonNode& node, ResourceType& type) const;
    static void checkKey(const JsonNode& node, const QString& key, QStringList& known);
    [[nodiscard]] static ResourceParameter readParameter(const QString& key, const JsonNode& node);
    void readRule(const JsonNode& node) const;
    void applyRule(const QString& rule, const JsonNode& node, ResourceType& type) const;
    [[nodiscard]] bool isPart(const ResourceType& type) const;
    [[nodiscard]] ResourceType* typeNamed(const QString& name) const;
    [[nodiscard]] QStringList names() const;

    std::vector<std::shared_ptr<ResourceType>> m_types;
    int m_nextCode = FirstOwnCode;
};

ResourceTypes ResourceTypeReader::read(const JsonNode& types, const JsonNode& rules)
{
    types.expectArray();
    for (int i = 0; i < types.size(); ++i)
        readType(types.item(i));
    for (int i = 0; i < types.size(); ++i)
        connectParts(types.item(i), *m_types[static_cast<std::size_t>(i)]);
    for (int i = 0; i < types.size(); ++i)
        checkParts(types.item(i), *m_types[static_cast<std::size_t>(i)]);
    rules.expectArray();
    for (int i = 0; i < rules.size(); ++i)
        readRule(rules.item(i));
    return {m_types.begin(), m_types.end()};
}

void ResourceTypeReader::readType(const JsonNode& node)
{
    node.expectObject({QStringLiteral("name"), QStringLiteral("title"), QStringLiteral("code"), QStringLiteral("parts"),
        QStringLiteral("feeds"), QStringLiteral("properties"), QStringLiteral("parameters")});
    auto type = std::make_shared<ResourceType>();
    type->number = static_cast<int>(m_types.size());
    type->name = node.requiredText(QStringLiteral("name"));
    type->title = node.optionalText(QStringLiteral("title"), type->name);
    const QString error = textError(type->name);
    if (!error.isEmpty())
        node.member(QStringLiteral("name")).fail(error);
    if (typeNamed(type->name))
        node.member(QStringLiteral("name")).fail(QStringLiteral("the type \"%1\" is there twice").arg(type->name));
    type->code
        = node.member(QStringLiteral("code")).exists() ? codeOf(node.member(QStringLiteral("code"))) : m_nextCode++;
    const JsonNode feeds = node.member(QStringLiteral("feeds"));
    type->feeds = feeds.exists() && feeds.boolean();
    readKeys(node, *type);
    m_types.push_back(std::move(type));
}

int ResourceTypeReader::codeOf(const JsonNode& node) const
{
    const int code = static_cast<int>(contractTypeNames().indexOf(node.text()));
    if (code < 0)
        node.fail(QStringLiteral("unknown code \"%1\", expected %2")
                      .arg(node.text(), quotedAlternatives(contractTypeNames())));
    return code;
}

// The type of the parts may come later in the file.
void ResourceTypeReader::connectParts(const JsonNode& node, ResourceType& type) const
{
    const JsonNode parts = node.member(QStringLiteral("parts"));
    if (!parts.exists())
        return;
    type.parts = typeNamed(parts.text());
    if (!type.parts)
        parts.fail(QStringLiteral("unknown type \"%1\", expected %2").arg(parts.text(), quotedAlternatives(names())));
}

void ResourceTypeReader::checkParts(const JsonNode& node, const ResourceType& type)
{
    if (type.parts && type.parts->parts)
        node.member(QStringLiteral("parts"))
            .fail(QStringLiteral("a part has a site of its own, but \"%1\" has parts itself").arg(type.parts->name));
}

void ResourceTypeReader::readKeys(const JsonNode& node, ResourceType& type) const
{
    const JsonNode properties = node.member(QStringLiteral("properties"));
    QStringList known = resourceMembers();
    type.properties = properties.texts();
    for (int i = 0; i < type.properties.size(); ++i)
        checkKey(properties.item(i), type.properties.at(i), known);
    const JsonNode parameters = node.member(QStringLiteral("parameters"));
    parameters.expectMap();
    const QStringList keys = parameters.keys();
    for (const QString& key : keys) {
        checkKey(parameters.member(key), key, known);
        type.parameters.push_back(readParameter(key, parameters.member(key)));
    }
}

void ResourceTypeReader::checkKey(const JsonNode& node, const QString& key, QStringList& known)
{
    if (known.contains(key))
        node.fail(QStringLiteral("\"%1\" is the name of something else in the design file").arg(key));
    else if (!textError(key).isEmpty())
        node.fail(textError(key));
    known.append(key);
}

ResourceParameter ResourceTypeReader::readParameter(const QString& key, const JsonNode& node)
{
    node.expectObject({QStringLiteral("title"), QStringLiteral("unit"), QStringLiteral("value"),
        QStringLiteral("minimum"), QStringLiteral("maximum"), QStringLiteral("choices")});
    ResourceParameter parameter;
    parameter.key = key;
    parameter.title = node.optionalText(QStringLiteral("title"), key);
    parameter.unit = node.optionalText(QStringLiteral("unit"));
    const JsonNode minimum = node.member(QStringLiteral("minimum"));
    const JsonNode maximum = node.member(QStringLiteral("maximum"));
    parameter.minimum = minimum.exists() ? minimum.real() : std::numeric_limits<double>::lowest();
    parameter.maximum = maximum.exists() ? maximum.real() : std::numeric_limits<double>::max();
    const JsonNode choices = node.member(QStringLiteral("choices"));
    choices.expectArray();
    QStringList spelled;
    for (int i = 0; i < choices.size(); ++i)
        spelled.append(parameter.accepted(QString::number(choices.item(i).real(), 'f')).value_or(QString()));
    parameter.choices = spelled;
    const JsonNode value = node.member(QStringLiteral("value"));
    parameter.preset = parameter.accepted(QString::number(value.real(), 'f')).value_or(QString());
    if (parameter.preset.isEmpty())
        (value.exists() ? value : node).fail(QStringLiteral("a parameter needs a value that it accepts"));
    return parameter;
}

void ResourceTypeReader::readRule(const JsonNode& node) const
{
    node.expectObject(
        {QStringLiteral("rule"), QStringLiteral("type"), QStringLiteral("property"), QStringLiteral("count")});
    const QString name = node.requiredText(QStringLiteral("type"));
    ResourceType* type = typeNamed(name);
    if (type)
        applyRule(node.requiredText(QStringLiteral("rule")), node, *type);
    else
        node.member(QStringLiteral("type"))
            .fail(QStringLiteral("unknown type \"%1\", expected %2").arg(name, quotedAlternatives(names())));
}

void ResourceTypeReader::applyRule(const QString& rule, const JsonNode& node, ResourceType& type) const
{
    const JsonNode ruleNode = node.member(QStringLiteral("rule"));
    if (type.parts) {
        node.member(QStringLiteral("type")).fail(QStringLiteral("a rule is about a type that has a site of its own"));
    } else if (rule == SameUnitRule) {
        type.sharesUnit = true;
        if (!isPart(type))
            ruleNode.fail(QStringLiteral("\"%1\" is no part of any type").arg(type.name));
    } else if (rule == ReachableRule) {
        type.mustReach = true;
        if (!type.feeds)
            ruleNode.fail(QStringLiteral("\"%1\" feeds nothing").arg(type.name));
    } else if (rule == AgreeRule) {
        type.agreesOn = node.requiredText(QStringLiteral("property"));
        if (!type.properties.contains(type.agreesOn))
            node.member(QStringLiteral("property"))
                .fail(QStringLiteral("\"%1\" has no property \"%2\"").arg(type.name, type.agreesOn));
    } else if (rule == AtMostRule) {
        type.mostInGroup = node.requiredNumber(QStringLiteral("count"), 1, std::numeric_limits<int>::max());
    } else {
        ruleNode.fail(QStringLiteral("unknown rule \"%1\", expected %2")
                          .arg(rule, quotedAlternatives({SameUnitRule, ReachableRule, AgreeRule, AtMostRule})));
    }
}

bool ResourceTypeReader::isPart(const ResourceType& type) const
{
    return std::any_of(m_types.begin(), m_types.end(), [&type](const auto& each) { return each->parts == &type; });
}

ResourceType* ResourceTypeReader::typeNamed(const QString& name) const
{
    const auto it
        = std::find_if(m_types.begin(), m_types.end(), [&name](const auto& type) { return type->name == name; });
    return it == m_types.end() ? nullptr : it->get();
}

QStringList ResourceTypeReader::names() const
{
    return namesOf({m_types.begin(), m_types.end()});
}

} // namespace

const QStringList& resourceMembers()
{
    static const QStringList members{QStringLiteral("name"), QStringLiteral("type"), QStringLiteral("children"),
        QStringLiteral("site"), QStringLiteral("fixed"), QStringLiteral("feeds")};
    return members;
}

ResourceTypes readResourceTypes(const JsonNode& types, const JsonNode& rules)
{
    return ResourceTypeReader().read(types, rules);
}

} // namespace mirn::zelengine
