// SPDX-License-Identifier: MIT
#include "engine/designreader.h"

#include "engine/input/jsonnode.h"
#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/model/resourcename.h"
#include "engine/resourcetypereader.h"
#include "engine/rules/placementrules.h"

#include <QLocale>
#include <QMap>

#include <utility>
#include <vector>

namespace mirn::zelengine {

namespace {

class DesignReader
{
public:
    DesignReader(const Device& device, JsonReport& report)
        : m_device(device)
        , m_report(report)
        , m_members(resourceMembers() + allKeys())
    { }

    Design read(const JsonNode& root);

private:
    struct Pending // a member that can be resolved only once all resources are known
    {
        int resource;
        JsonNode node;
        bool fixed;
    };

    void readName(const JsonNode& root);
    void readChildren(const JsonNode& list, int parent);
    void readResource(const JsonNode& node, int parent);
    [[nodiscard]] const ResourceType* readType(const JsonNode& node) const;
    [[nodiscard]] QStringList allKeys() const;
    static void checkMembers(const JsonNode& node, const Resource& resource);
    void readOwnMembers(const JsonNode& node, Resource& resource) const;
    static void readProperty(const JsonNode& member, const QString& key, Resource& resource);
    static void readParameter(const JsonNode& member, const ResourceParameter& parameter, Resource& resource);
    void readConnection(const JsonNode& node);
    [[nodiscard]] int linkEnd(const JsonNode& node, const QString& key) const;
    void connect(const Pending& feeds);
    void place(const Pending& site);

    const Device& m_device;
    JsonReport& m_report;
    Design m_design;
    const QStringList m_members; // of any resource
    std::vector<Pending> m_feeds;
    std::vector<Pending> m_sites;
};

Design DesignReader::read(const JsonNode& root)
{
    root.expectObject({QStringLiteral("$schema"), QStringLiteral("name"), QStringLiteral("resources"),
        QStringLiteral("connections")});
    readName(root);
    readChildren(root.member(QStringLiteral("resources")), -1);
    for (const Pending& feeds : m_feeds)
        connect(feeds);
    const JsonNode connections = root.member(QStringLiteral("connections"));
    connections.expectArray();
    for (int i = 0; i < connections.size() && !m_report.isFailed(); ++i)
        readConnection(connections.item(i));
    for (const Pending& site : m_sites) {
        if (m_report.isFailed())
            break;
        place(site);
    }
    return std::move(m_design);
}

void DesignReader::readName(const JsonNode& root)
{
    const QString name = root.optionalText(QStringLiteral("name"));
    const QString error = name.isEmpty() ? QString() : resourceNameError(name);
    if (!error.isEmpty())
        root.member(QStringLiteral("name")).fail(error);
    m_design = Design(name);
}

// Recurses once per level; the nesting limit of the JSON parser keeps that to a few hundred levels.
void DesignReader::readChildren(const JsonNode& list, int parent)
{
    list.expectArray();
    for (int i = 0; i < list.size() && !m_report.isFailed(); ++i)
        readResource(list.item(i), parent);
}

void DesignReader::readResource(const JsonNode& node, int parent)
{
    node.expectObject(m_members);
    const JsonNode nameNode = node.member(QStringLiteral("name"));
    Resource resource;
    resource.name = node.requiredText(QStringLiteral("name"));
    const QString error = resourceNameError(resource.name);
    if (!error.isEmpty())
        nameNode.fail(error);
    resource.type = readType(node);
    checkMembers(node, resource);
    readOwnMembers(node, resource);
    const int index = m_design.add(parent, std::move(resource));
    if (index < 0)
        nameNode.fail(QStringLiteral("the name \"%1\" is there twice at this level").arg(nameNode.text()));
    if (m_report.isFailed())
        return;

    const JsonNode fixed = node.member(QStringLiteral("fixed"));
    const JsonNode site = node.member(QStringLiteral("site"));
    const bool isFixed = fixed.exists() && fixed.boolean();
    if (site.exists())
        m_sites.push_back({index, site, isFixed});
    else if (isFixed)
        fixed.fail(QStringLiteral("what is fixed needs a \"site\""));
    const JsonNode feeds = node.member(QStringLiteral("feeds"));
    if (feeds.exists())
        m_feeds.push_back({index, feeds, false});
    readChildren(node.member(QStringLiteral("children")), index);
}

const ResourceType* DesignReader::readType(const JsonNode& node) const
{
    const JsonNode member = node.member(QStringLiteral("type"));
    if (!member.exists())
        return nullptr;
    const ResourceType* type = findType(m_device.types(), member.text());
    if (!type)
        member.fail(QStringLiteral("unknown type \"%1\", expected %2")
                        .arg(member.text(), quotedAlternatives(namesOf(m_device.types()))));
    return type;
}

// The keys of the properties and parameters of all types.
QStringList DesignReader::allKeys() const
{
    QStringList keys;
    for (const auto& type : m_device.types()) {
        keys += type->properties;
        for (const ResourceParameter& parameter : type->parameters)
            keys.append(parameter.key);
    }
    keys.removeDuplicates();
    return keys;
}

// A member that has no meaning for this type is more likely a mistake than intended.
void DesignReader::checkMembers(const JsonNode& node, const Resource& resource)
{
    const JsonNode site = node.member(QStringLiteral("site"));
    const JsonNode children = node.member(QStringLiteral("children"));
    const JsonNode feeds = node.member(QStringLiteral("feeds"));
    const bool holdsOthers = !hasOwnSite(resource.type);
    if (site.exists() && holdsOthers)
        site.fail(QStringLiteral("only the parts of \"%1\" have sites").arg(resource.name));
    if (children.exists() && !holdsOthers)
        children.fail(QStringLiteral("a resource of type %1 has no children").arg(resource.type->name));
    if (feeds.exists() && !resource.isSource())
        feeds.fail(QStringLiteral("only a resource of a type with \"feeds\" feeds others"));
}

void DesignReader::readOwnMembers(const JsonNode& node, Resource& resource) const
{
    for (int i = static_cast<int>(resourceMembers().size()); i < m_members.size(); ++i) {
        const QString& key = m_members.at(i);
        const JsonNode member = node.member(key);
        if (!member.exists())
            continue;
        const ResourceParameter* parameter = resource.type ? resource.type->parameter(key) : nullptr;
        if (parameter)
            readParameter(member, *parameter, resource);
        else
            readProperty(member, key, resource);
    }
}

void DesignReader::readProperty(const JsonNode& member, const QString& key, Resource& resource)
{
    if (resource.isFolder())
        member.fail(QStringLiteral("what only groups others has no %1").arg(key));
    else if (!resource.type->properties.contains(key))
        member.fail(QStringLiteral("a resource of type %1 has no %2").arg(resource.type->name, key));
    else
        resource.properties.insert(key, member.text());
}

void DesignReader::readParameter(const JsonNode& member, const ResourceParameter& parameter, Resource& resource)
{
    const auto value = parameter.accepted(QString::number(member.real(), 'g', QLocale::FloatingPointShortest));
    if (value)
        resource.parameters.insert(parameter.key, *value);
    else
        member.fail(QStringLiteral("expected %1").arg(parameter.expectation()));
}

void DesignReader::readConnection(const JsonNode& node)
{
    static const QMap<QString, Link::Rule> rules{{QStringLiteral("near"), Link::Rule::Near},
        {QStringLiteral("same-unit"), Link::Rule::SameUnit}, {QStringLiteral("reachable"), Link::Rule::Reachable}};
    node.expectObject({QStringLiteral("from"), QStringLiteral("to"), QStringLiteral("rule")});
    const int from = linkEnd(node, QStringLiteral("from"));
    const int to = linkEnd(node, QStringLiteral("to"));
    const QString rule = node.optionalText(QStringLiteral("rule"), QStringLiteral("near"));
    if (!rules.contains(rule))
        node.member(QStringLiteral("rule"))
            .fail(QStringLiteral("unknown rule \"%1\", expected %2").arg(rule, quotedAlternatives(rules.keys())));
    else if (from >= 0 && from == to)
        node.member(QStringLiteral("to")).fail(QStringLiteral("a connection needs two resources"));
    else if (from >= 0 && to >= 0)
        m_design.addLink(from, to, rules.value(rule));
}

// Returns -1, and reports an error, for what takes no site.
int DesignReader::linkEnd(const JsonNode& node, const QString& key) const
{
    const QString name = node.requiredText(key);
    const int index = m_design.find(m_design.name() + QLatin1Char('/') + name);
    if (index >= 0 && hasOwnSite(m_design.resource(index).type))
        return index;
    node.member(key).fail(index < 0 ? QStringLiteral("there is no resource \"%1\"").arg(name)
                                    : QStringLiteral("\"%1\" takes no site").arg(name));
    return -1;
}

// The names in "feeds" are paths below the root.
void DesignReader::connect(const Pending& feeds)
{
    const QStringList names = feeds.node.texts();
    for (int i = 0; i < names.size(); ++i) {
        const int ip = m_design.find(m_design.name() + QLatin1Char('/') + names.at(i));
        if (ip >= 0 && m_design.resource(ip).isIp())
            m_design.addFeed(feeds.resource, ip);
        else
            feeds.node.item(i).fail(QStringLiteral("there is no IP \"%1\"").arg(names.at(i)));
    }
}

void DesignReader::place(const Pending& site)
{
    const QString name = site.node.text();
    const Site* target = m_device.site(name);
    if (!target) {
        site.node.fail(QStringLiteral("the device \"%1\" has no site \"%2\"").arg(m_device.name(), name));
        return;
    }
    const Proposal proposal = PlacementRules(m_device, m_design).propose(site.resource, target->id);
    if (!proposal.isAllowed()) {
        site.node.fail(proposal.refusal.sentence());
        return;
    }
    m_design.setSite(site.resource, target->id);
    m_design.setFixed(site.resource, site.fixed);
}

} // namespace

std::optional<Design> readDesign(const QString& fileName, const Device& device, QString* error, QStringList* warnings)
{
    JsonReport report;
    const QJsonValue root = report.load(fileName);
    std::optional<Design> design;
    if (!report.isFailed())
        design = DesignReader(device, report).read(JsonNode(root, report));
    warnings->append(report.warnings());
    if (!report.isFailed())
        return design;
    *error = report.error();
    return std::nullopt;
}

} // namespace mirn::zelengine
