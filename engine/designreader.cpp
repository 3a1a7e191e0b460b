// SPDX-License-Identifier: MIT
#include "engine/designreader.h"

#include "engine/input/jsonnode.h"
#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/model/resourcename.h"
#include "engine/model/resourceparameter.h"
#include "engine/rules/placementrules.h"

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
    [[nodiscard]] ResourceType readType(const JsonNode& node) const;
    void checkMembers(const JsonNode& node, const Resource& resource) const;
    static void readParameters(const JsonNode& node, Resource& resource);
    void connect(const Pending& feeds);
    void place(const Pending& site);

    const Device& m_device;
    JsonReport& m_report;
    Design m_design;
    std::vector<Pending> m_feeds;
    std::vector<Pending> m_sites;
};

Design DesignReader::read(const JsonNode& root)
{
    root.expectObject({QStringLiteral("$schema"), QStringLiteral("name"), QStringLiteral("resources")});
    readName(root);
    readChildren(root.member(QStringLiteral("resources")), -1);
    for (const Pending& feeds : m_feeds)
        connect(feeds);
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
    node.expectObject(
        QStringList{QStringLiteral("name"), QStringLiteral("type"), QStringLiteral("children"), QStringLiteral("site"),
            QStringLiteral("fixed"), QStringLiteral("feeds"), QStringLiteral("voltage")}
        + parameterKeys());
    const JsonNode nameNode = node.member(QStringLiteral("name"));
    Resource resource;
    resource.name = node.requiredText(QStringLiteral("name"));
    const QString error = resourceNameError(resource.name);
    if (!error.isEmpty())
        nameNode.fail(error);
    resource.type = readType(node);
    resource.voltage = node.optionalText(QStringLiteral("voltage"));
    checkMembers(node, resource);
    readParameters(node, resource);
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

ResourceType DesignReader::readType(const JsonNode& node) const
{
    const JsonNode member = node.member(QStringLiteral("type"));
    if (!member.exists())
        return ResourceType::Folder;
    const QString name = member.text();
    const auto type = resourceTypeFromName(name);
    if (!type)
        member.fail(
            QStringLiteral("unknown type \"%1\", expected %2").arg(name, quotedAlternatives(resourceTypeNames())));
    return type.value_or(ResourceType::Folder);
}

// A member that has no meaning for this type is more likely a mistake than intended.
void DesignReader::checkMembers(const JsonNode& node, const Resource& resource) const
{
    const ResourceType type = resource.type;
    const bool holdsOthers = type == ResourceType::Folder || type == ResourceType::Ip;
    const bool isClock = type == ResourceType::Pll || type == ResourceType::ExtRef;
    const JsonNode site = node.member(QStringLiteral("site"));
    const JsonNode children = node.member(QStringLiteral("children"));
    const JsonNode feeds = node.member(QStringLiteral("feeds"));
    const JsonNode voltage = node.member(QStringLiteral("voltage"));
    if (site.exists() && holdsOthers)
        site.fail(QStringLiteral("only the parts of \"%1\" have sites").arg(resource.name));
    if (children.exists() && !holdsOthers)
        children.fail(QStringLiteral("a resource of type %1 has no children").arg(resourceTypeName(type)));
    if (feeds.exists() && !isClock)
        feeds.fail(QStringLiteral("only a resource of type PLL or EXTREF feeds others"));
    if (voltage.exists() && type != ResourceType::Uvccio)
        voltage.fail(QStringLiteral("only a resource of type UVCCIO has a voltage"));
}

void DesignReader::readParameters(const JsonNode& node, Resource& resource)
{
    for (const QString& key : parameterKeys()) {
        const JsonNode member = node.member(key);
        if (!member.exists())
            continue;
        const ResourceParameter* parameter = findParameter(resource.type, key);
        if (!parameter) {
            member.fail(resource.type == ResourceType::Folder
                    ? QStringLiteral("what only groups others has no %1").arg(key)
                    : QStringLiteral("a resource of type %1 has no %2").arg(resourceTypeName(resource.type), key));
            continue;
        }
        const auto value = parameter->accepted(QString::number(member.real(), 'g', QLocale::FloatingPointShortest));
        if (value)
            resource.parameters.insert(key, *value);
        else
            member.fail(QStringLiteral("expected %1").arg(parameter->expectation()));
    }
}

// The names in "feeds" are paths below the root.
void DesignReader::connect(const Pending& feeds)
{
    const QStringList names = feeds.node.texts();
    for (int i = 0; i < names.size(); ++i) {
        const int ip = m_design.find(m_design.name() + QLatin1Char('/') + names.at(i));
        if (ip >= 0 && m_design.resource(ip).type == ResourceType::Ip)
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
