// SPDX-License-Identifier: MIT
#include "planning/planlines.h"

#include "planning/siteareas.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zelplanengine.h"
#include "platform/contract/zeltext.h"

#include <QCoreApplication>
#include <QLineF>

#include <algorithm>
#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr std::size_t MostUnplaced = 256;

QString lineText(const char* source)
{
    return QCoreApplication::translate("PlanLines", source);
}

} // namespace

PlanLines::PlanLines(zelchipengine& engine, SiteAreas& areas, Candidates candidates)
    : m_engine(engine)
    , m_areas(areas)
    , m_candidates(std::move(candidates))
{ }

std::vector<PlanLine> PlanLines::linesOf(
    const std::vector<zelconnection>& connections, const std::function<bool(const zelconnection&)>& isWanted)
{
    m_places.clear();
    std::vector<PlanLine> lines;
    for (std::size_t n = 0; n < connections.size(); ++n) {
        const zelconnection& connection = connections[n];
        const bool isFromPlaced = connection.fromSite >= 0;
        const bool isToPlaced = connection.toSite >= 0;
        if ((!isFromPlaced && !isToPlaced) || !isWanted(connection))
            continue;
        const QRectF from = m_areas.areaOf(isFromPlaced ? connection.fromSite : connection.toSite);
        const QRectF to = isFromPlaced && isToPlaced ? m_areas.areaOf(connection.toSite) : QRectF();
        PlanLine line{from.center(), to.center(), static_cast<int>(n), kindOf(connection.from),
            !connection.broken.empty(), !isFromPlaced || !isToPlaced};
        if (!from.isNull()
            && (line.isStub ? findNearest(isFromPlaced ? connection.to : connection.from, line) : !to.isNull()))
            lines.push_back(line);
    }
    return lines;
}

PlanLine::Kind PlanLines::kindOf(const std::string& resource)
{
    if (resource == m_lastResource)
        return m_lastKind;
    m_lastResource = resource;
    switch (m_engine.getResourceType(&resource)) {
    case ZEL_RESOURCE_DCUCHANNEL:
    case ZEL_RESOURCE_IP:
        m_lastKind = PlanLine::Kind::Ip;
        break;
    case ZEL_RESOURCE_UVCCIO:
        m_lastKind = PlanLine::Kind::Supply;
        break;
    default:
        m_lastKind = PlanLine::Kind::Clock;
    }
    return m_lastKind;
}

// All stubs of an unplaced resource lead to the same site.
bool PlanLines::findNearest(const std::string& resource, PlanLine& line)
{
    auto place = std::find_if(
        m_places.begin(), m_places.end(), [&resource](const Place& each) { return each.resource == resource; });
    if (place == m_places.end() && m_places.size() < MostUnplaced) {
        Place nearest{resource, {}, -1};
        double least = 0;
        for (int site : m_candidates(resource)) {
            const bool isTaken = std::any_of(
                m_places.begin(), m_places.end(), [site](const Place& each) { return each.site == site; });
            const QRectF area = isTaken ? QRectF() : m_areas.areaOf(site);
            const double distance = QLineF(line.from, area.center()).length();
            if (!area.isNull() && (nearest.site < 0 || distance < least)) {
                least = distance;
                nearest.middle = area.center();
                nearest.site = site;
            }
        }
        place = m_places.insert(m_places.end(), nearest);
    }
    if (place == m_places.end() || place->site < 0)
        return false;
    line.to = place->middle;
    return true;
}

QString describe(const PlanLine& line, const zelconnection& connection)
{
    const QString from = fromEngineText(connection.from);
    const QString to = fromEngineText(connection.to);
    QString text;
    switch (line.kind) {
    case PlanLine::Kind::Clock:
        text = lineText("%1 feeds %2").arg(from, to);
        break;
    case PlanLine::Kind::Ip:
        text = lineText("%1 and %2 belong together").arg(from, to);
        break;
    case PlanLine::Kind::Supply:
        text = lineText("%1 and %2 supply one bank").arg(from, to);
        break;
    }
    text += QLatin1Char('\n');
    if (line.isStub)
        text += lineText("%1 is not placed; this way is the nearest site that takes it")
                    .arg(connection.fromSite < 0 ? from : to);
    else
        text += lineText("Length %1").arg(QLineF(line.from, line.to).length(), 0, 'f', 1);
    const QString broken = fromEngineText(connection.broken);
    return broken.isEmpty() ? text : text + QLatin1Char('\n') + broken.left(1).toUpper() + broken.mid(1);
}

} // namespace mirn::zelchipview
