// SPDX-License-Identifier: MIT
#include "benchmarks/subjects/designproject.h"

#include <QFile>

namespace zelbench {

namespace {

constexpr int FirstSupplyId = 1;
constexpr int FirstUnitId = 100'000'000;
constexpr int BankSize = 8;
constexpr int UnitSize = 4;
constexpr int SitesPerUnitSite = 4; // supply sites for each site of a SerDes unit
constexpr int IpChannels = 4;

const char ProjectText[] = R"({"name": "Benchmark", "device": "device.json", "design": "design.json",
 "implementations": [{"name": "impl"}]})";

const char DeviceHead[] = R"({"name": "Benchmark", "drawing": "drawing.svg", "kinds": [
  {"name": "UNIT", "accepts": ["IP"]},
  {"name": "CHANNEL", "accepts": ["DCUCHANNEL"]},
  {"name": "PLL", "accepts": ["PLL"]},
  {"name": "SUPPLY", "accepts": ["UVCCIO"], "occupiedFill": "#a690d2"}],
 "sites": [)";

QByteArray number(int value)
{
    return QByteArray::number(value);
}

QByteArray site(int id, const QByteArray& name, const char* kind, const QByteArray& group, const QByteArray& more = {})
{
    return "\n{\"id\": " + number(id) + ", \"name\": \"" + name + "\", \"kind\": \"" + kind + "\", \"group\": \""
        + group + '"' + more + '}';
}

QByteArray unitSites(int unit, int units)
{
    const QByteArray name = "U" + number(unit);
    const QByteArray neighbour = "U" + number(unit + 1 < units ? unit + 1 : 0);
    const int id = FirstUnitId + unit * UnitSize;
    return site(id, name, "UNIT", name, ", \"neighbours\": [\"" + neighbour + "\"]") + ','
        + site(id + 1, name + "_CH0", "CHANNEL", name) + ',' + site(id + 2, name + "_CH1", "CHANNEL", name) + ','
        + site(id + 3, name + "_PLL", "PLL", name,
            ", \"reaches\": [\"" + name + "\", \"" + neighbour + "\"], \"attributes\": {\"lanes\": \"2\"}");
}

QByteArray device(int sites, int pitch)
{
    QByteArray text(DeviceHead);
    for (int n = 0; n < sites; ++n)
        text += site(DesignProject::supplySite(n * pitch), "V" + number(n), "SUPPLY", "BANK" + number(n / BankSize))
            + ',';
    const int units = sites / (SitesPerUnitSite * UnitSize);
    for (int unit = 0; unit < units; ++unit)
        text += unitSites(unit, units) + ',';
    text.chop(1);
    return text + "]}\n";
}

QByteArray design(int supplies)
{
    QByteArray text = R"({"name": "top", "resources": [{"name": "ip", "type": "IP", "children": [)";
    for (int channel = 0; channel < IpChannels; ++channel)
        text += "{\"name\": \"ch" + number(channel) + "\", \"type\": \"DCUCHANNEL\"},";
    text += R"({"name": "pll", "type": "PLL"}]})";
    for (int n = 0; n < supplies; ++n) {
        const char* voltage = n % (2 * BankSize) < BankSize ? "1.8 V" : "3.3 V";
        text += ",\n{\"name\": \"v" + number(n) + "\", \"type\": \"UVCCIO\", \"voltage\": \"" + voltage + "\"}";
    }
    return text + "]}\n";
}

} // namespace

DesignProject::DesignProject(int sites, int supplies, int pitch)
    : m_pitch(pitch)
{
    write(QStringLiteral("project.json"), ProjectText);
    write(QStringLiteral("device.json"), device(sites, pitch));
    write(QStringLiteral("design.json"), design(supplies));
}

QString DesignProject::deviceFile() const
{
    return m_folder.filePath(QStringLiteral("device.json"));
}

int DesignProject::supplySite(int n)
{
    return FirstSupplyId + n;
}

QString DesignProject::supply(int n)
{
    return QStringLiteral("top/v%1").arg(n);
}

QString DesignProject::ip()
{
    return QStringLiteral("top/ip");
}

void DesignProject::write(const QString& fileName, const QByteArray& content) const
{
    QFile file(m_folder.filePath(fileName));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
}

} // namespace zelbench
