// SPDX-License-Identifier: MIT
#include "engine/devicereader.h"

#include "engine/input/inputfile.h"
#include "engine/input/jsonnode.h"
#include "engine/model/device.h"
#include "engine/model/resourcename.h"
#include "engine/resourcetypereader.h"
#include "engine/rules/settingstore.h"

#include <QDir>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <limits>

namespace mirn::zelengine {

namespace {

// The largest size of a drawing or a filter file, in bytes.
constexpr qint64 LargestFile = qint64(1) << 30;

// An unreadable file is no error here: only a caller that needs the file knows whether it matters.
QString fileError(const JsonNode& name, const QString& file)
{
    const QString error = inputFileError(file, LargestFile);
    return error.isEmpty() ? QString()
                           : name.located(QStringLiteral("\"%1\" cannot be read: %2").arg(name.text(), error));
}

// Whether the choices of a setting are offered for a key: its own, or one of those in "A:B".
bool isSharedBy(const SiteSetting& setting, const QString& key)
{
    return setting.key == key || setting.key.split(QLatin1Char(':')).contains(key);
}

class DeviceReader
{
public:
    explicit DeviceReader(JsonReport& report)
        : m_report(report)
    { }

    Device read(const JsonNode& root);

private:
    void readFileNames(const JsonNode& root);
    void readKind(const JsonNode& node);
    void readSite(const JsonNode& node);
    [[nodiscard]] int kindOf(const JsonNode& site) const;
    [[nodiscard]] std::vector<SiteSetting> readSettings(const JsonNode& node) const;
    static void checkFreshValue(const SiteSetting& setting, const std::vector<SiteSetting>& all, const JsonNode& value);
    void checkReferences(const JsonNode& sites) const;
    void checkGroupList(const JsonNode& names) const;
    void checkDisabling(const Site& site, const JsonNode& disabledBy) const;

    JsonReport& m_report;
    Device m_device;
};

Device DeviceReader::read(const JsonNode& root)
{
    root.expectObject(
        {QStringLiteral("$schema"), QStringLiteral("name"), QStringLiteral("drawing"), QStringLiteral("filter"),
            QStringLiteral("types"), QStringLiteral("rules"), QStringLiteral("kinds"), QStringLiteral("sites")});
    m_device.setName(root.requiredText(QStringLiteral("name")));
    readFileNames(root);
    if (root.member(QStringLiteral("types")).exists() && !m_report.isFailed())
        m_device.setTypes(
            readResourceTypes(root.member(QStringLiteral("types")), root.member(QStringLiteral("rules"))));
    else if (root.member(QStringLiteral("rules")).exists())
        root.member(QStringLiteral("rules")).fail(QStringLiteral("rules need \"types\" that they are about"));

    const JsonNode kinds = root.member(QStringLiteral("kinds"));
    kinds.expectArray();
    for (int i = 0; i < kinds.size() && !m_report.isFailed(); ++i)
        readKind(kinds.item(i));

    const JsonNode sites = root.member(QStringLiteral("sites"));
    sites.expectArray();
    for (int i = 0; i < sites.size() && !m_report.isFailed(); ++i)
        readSite(sites.item(i));
    if (!m_report.isFailed())
        checkReferences(sites);
    return std::move(m_device);
}

void DeviceReader::readFileNames(const JsonNode& root)
{
    const QDir folder = QFileInfo(m_report.fileName()).absoluteDir();
    m_device.setDrawingFile(folder.absoluteFilePath(root.requiredText(QStringLiteral("drawing"))));
    m_device.setDrawingError(fileError(root.member(QStringLiteral("drawing")), m_device.drawingFile()));
    const QString filter = root.optionalText(QStringLiteral("filter"));
    if (filter.isEmpty())
        return;
    m_device.setFilterFile(folder.absoluteFilePath(filter));
    m_device.setFilterError(fileError(root.member(QStringLiteral("filter")), m_device.filterFile()));
}

void DeviceReader::readKind(const JsonNode& node)
{
    static const QRegularExpression colour(QStringLiteral("^#[0-9A-Fa-f]{6}$"));
    node.expectObject(
        {QStringLiteral("name"), QStringLiteral("title"), QStringLiteral("accepts"), QStringLiteral("occupiedFill")});
    SiteKind kind;
    kind.name = node.requiredText(QStringLiteral("name"));
    kind.title = node.optionalText(QStringLiteral("title"), kind.name);
    if (m_device.kindIndex(kind.name) >= 0)
        node.member(QStringLiteral("name")).fail(QStringLiteral("the kind \"%1\" is there twice").arg(kind.name));

    const JsonNode accepts = node.member(QStringLiteral("accepts"));
    const QStringList names = accepts.texts();
    for (int i = 0; i < names.size(); ++i) {
        if (const ResourceType* type = findType(m_device.types(), names.at(i)))
            kind.accepts.push_back(type);
        else
            accepts.item(i).fail(QStringLiteral("unknown resource type \"%1\", expected %2")
                                     .arg(names.at(i), quotedAlternatives(namesOf(m_device.types()))));
    }
    kind.occupiedFill = node.optionalText(QStringLiteral("occupiedFill"));
    if (!kind.occupiedFill.isEmpty() && !colour.match(kind.occupiedFill).hasMatch())
        node.member(QStringLiteral("occupiedFill")).fail(QStringLiteral("expected a colour as \"#rrggbb\""));
    m_device.addKind(std::move(kind));
}

void DeviceReader::readSite(const JsonNode& node)
{
    node.expectObject({QStringLiteral("id"), QStringLiteral("name"), QStringLiteral("kind"), QStringLiteral("group"),
        QStringLiteral("neighbours"), QStringLiteral("reaches"), QStringLiteral("attributes"),
        QStringLiteral("settings"), QStringLiteral("disabledBy")});
    Site site;
    site.id = node.requiredNumber(QStringLiteral("id"), 0, std::numeric_limits<int>::max());
    site.name = node.requiredText(QStringLiteral("name"));
    site.group = node.optionalText(QStringLiteral("group"));
    site.neighbours = node.member(QStringLiteral("neighbours")).texts();
    site.reaches = node.member(QStringLiteral("reaches")).texts();
    site.settings = readSettings(node.member(QStringLiteral("settings")));
    const JsonNode disabledBy = node.member(QStringLiteral("disabledBy"));
    disabledBy.expectMap();
    const QStringList settingKeys = disabledBy.keys();
    for (const QString& key : settingKeys)
        site.disabledBy.insert(key, disabledBy.member(key).texts());
    const JsonNode attributes = node.member(QStringLiteral("attributes"));
    attributes.expectMap();
    const QStringList keys = attributes.keys();
    for (const QString& key : keys)
        site.attributes.insert(key, attributes.member(key).text());

    site.kind = kindOf(node);
    const QString error = textError(site.name);
    if (!error.isEmpty())
        node.member(QStringLiteral("name")).fail(error);
    if (m_report.isFailed())
        return;
    const QString name = site.name;
    const QString key = m_device.site(site.id) ? QStringLiteral("id") : QStringLiteral("name");
    if (!m_device.addSite(std::move(site)))
        node.member(key).fail(QStringLiteral("another site has this %1").arg(key));
    else if (readsAsId(name))
        node.member(key).warn(
            QStringLiteral("commands take \"%1\" for an id, so this site can only be reached by its id").arg(name));
}

// Returns -1, and reports an error, for a kind that the file does not describe.
int DeviceReader::kindOf(const JsonNode& site) const
{
    const QString kind = site.requiredText(QStringLiteral("kind"));
    const int index = m_device.kindIndex(kind);
    if (index >= 0)
        return index;
    QStringList known;
    for (const SiteKind& other : m_device.kinds())
        known.append(other.name);
    site.member(QStringLiteral("kind"))
        .fail(known.isEmpty()
                ? QStringLiteral("unknown kind \"%1\", for the file has no \"kinds\"").arg(kind)
                : QStringLiteral("unknown kind \"%1\", expected one of %2").arg(kind, quotedAlternatives(known)));
    return index;
}

std::vector<SiteSetting> DeviceReader::readSettings(const JsonNode& node) const
{
    std::vector<SiteSetting> result;
    node.expectMap();
    const QStringList keys = node.keys();
    for (const QString& key : keys) {
        const JsonNode setting = node.member(key);
        setting.expectObject({QStringLiteral("value"), QStringLiteral("choices")});
        const QStringList choices = setting.member(QStringLiteral("choices")).texts();
        if (choices.isEmpty())
            setting.fail(QStringLiteral("the setting \"%1\" offers no choices").arg(key));
        result.push_back({key, setting.optionalText(QStringLiteral("value")), choices});
    }
    for (const SiteSetting& setting : result)
        checkFreshValue(setting, result, node.member(setting.key).member(QStringLiteral("value")));
    return result;
}

// A choice that holds for several keys together may be the value of each. A device that has it for one of them only
// opens as well: the list of problems tells, and the settings dialog mends it.
void DeviceReader::checkFreshValue(
    const SiteSetting& setting, const std::vector<SiteSetting>& all, const JsonNode& value)
{
    const auto isOffered = [&setting](const SiteSetting& other) {
        return isSharedBy(other, setting.key) && other.choices.contains(setting.value);
    };
    if (!setting.value.isEmpty() && std::none_of(all.begin(), all.end(), isOffered))
        value.fail(QStringLiteral("\"%1\" is not among the choices %2")
                       .arg(setting.value, quotedAlternatives(setting.choices)));
}

// Runs when all sites are known: the groups and settings that a site refers to must exist.
void DeviceReader::checkReferences(const JsonNode& sites) const
{
    const std::vector<Site>& known = m_device.sites();
    for (std::size_t i = 0; i < known.size(); ++i) {
        if (known[i].neighbours.isEmpty() && known[i].reaches.isEmpty() && known[i].disabledBy.isEmpty())
            continue;
        const JsonNode node = sites.item(static_cast<int>(i));
        checkGroupList(node.member(QStringLiteral("neighbours")));
        checkGroupList(node.member(QStringLiteral("reaches")));
        checkDisabling(known[i], node.member(QStringLiteral("disabledBy")));
    }
}

void DeviceReader::checkDisabling(const Site& site, const JsonNode& disabledBy) const
{
    for (auto it = site.disabledBy.begin(); it != site.disabledBy.end(); ++it) {
        for (int i = 0; i < it.value().size(); ++i) {
            const auto proposal = SettingStore(m_device).propose(site.id, it.key(), it.value().at(i));
            if (!proposal.isAllowed())
                disabledBy.member(it.key()).item(i).fail(proposal.refusal.sentence());
        }
    }
}

void DeviceReader::checkGroupList(const JsonNode& names) const
{
    for (int i = 0; i < names.size(); ++i) {
        const QString name = names.item(i).text();
        if (!m_device.hasGroup(name))
            names.item(i).fail(QStringLiteral("no site belongs to a group \"%1\"").arg(name));
    }
}

} // namespace

std::optional<Device> readDevice(const QString& fileName, QString* error, QStringList* warnings)
{
    JsonReport report;
    const QJsonValue root = report.load(fileName);
    std::optional<Device> device;
    if (!report.isFailed())
        device = DeviceReader(report).read(JsonNode(root, report));
    warnings->append(report.warnings());
    if (!report.isFailed())
        return device;
    *error = report.error();
    return std::nullopt;
}

} // namespace mirn::zelengine
