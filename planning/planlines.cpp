// SPDX-License-Identifier: MIT
#include "planning/planlines.h"

#include "planning/sentence.h"
#include "planning/siteareas.h"
#include "platform/contract/zeltext.h"

#include <QCoreApplication>
#include <QLineF>

#include <tuple>
#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr int MostUnplaced = 256;

QString lineText(const char* source)
{
    return QCoreApplication::translate("PlanLines", source);
}

} // namespace

bool PlanLine::operator==(const PlanLine& other) const
{
    const auto all = [](const PlanLine& line) {
        return std::make_tuple(line.from.x(), line.from.y(), line.to.x(), line.to.y(), line.connection, line.kind,
            line.isBroken, line.isStub, line.fromLayer, line.toLayer);
    };
    return all(*this) == all(other);
}

PlanLines::PlanLines(SiteAreas& areas, Candidates candidates)
    : m_areas(areas)
    , m_candidates(std::move(candidates))
{ }

std::vector<PlanLine> PlanLines::linesOf(const std::vector<zelconnection>& connections)
{
    m_places.clear();
    m_taken.clear();
    std::vector<std::size_t> wanted;
    for (std::size_t n = 0; n < connections.size(); ++n) {
        if (connections[n].fromSite >= 0 || connections[n].toSite >= 0)
            wanted.push_back(n);
    }
    const bool haveStubs = wanted.size() <= MostLinesWithStubs;
    std::vector<PlanLine> lines;
    for (std::size_t n : wanted) {
        const zelconnection& connection = connections[n];
        const bool isStub = connection.fromSite < 0 || connection.toSite < 0;
        if (isStub && !haveStubs)
            continue;
        const std::optional<SitePlace> from
            = m_areas.placeOf(connection.fromSite < 0 ? connection.toSite : connection.fromSite);
        if (!from)
            continue;
        const std::optional<SitePlace> to = isStub
            ? nearestFor(connection.fromSite < 0 ? connection.from : connection.to, from->area.center())
            : m_areas.placeOf(connection.toSite);
        if (to)
            lines.push_back({from->area.center(), to->area.center(), static_cast<int>(n), connection.kind,
                !connection.broken.empty(), isStub, from->layer, to->layer});
    }
    return lines;
}

// All stubs of an unplaced resource lead to the same site.
std::optional<SitePlace> PlanLines::nearestFor(const std::string& resource, const QPointF& from)
{
    const QByteArray name(resource.data(), static_cast<int>(resource.size()));
    auto place = m_places.find(name);
    if (place == m_places.end() && m_places.size() < MostUnplaced)
        place = m_places.insert(name, nearestFree(resource, from));
    return place != m_places.end() ? *place : std::nullopt;
}

std::optional<SitePlace> PlanLines::nearestFree(const std::string& resource, const QPointF& from)
{
    std::optional<SitePlace> nearest;
    double least = 0;
    for (int site : m_candidates(resource)) {
        const std::optional<SitePlace>& place = m_areas.placeOf(site);
        if (!place || m_taken.contains(site))
            continue;
        const double distance = QLineF(from, place->area.center()).length();
        if (!nearest || distance < least) {
            least = distance;
            nearest = place;
        }
    }
    if (nearest)
        m_taken.insert(nearest->id);
    return nearest;
}

QString describe(const PlanLine& line, const zelconnection& connection)
{
    const QString from = fromEngineText(connection.from);
    const QString to = fromEngineText(connection.to);
    QString text;
    switch (line.kind) {
    case PlanLine::Kind::Feeds:
        text = lineText("%1 feeds %2").arg(from, to);
        break;
    case PlanLine::Kind::Together:
        text = lineText("%1 and %2 belong together").arg(from, to);
        break;
    case PlanLine::Kind::OneGroup:
        text = lineText("%1 and %2 share one bank").arg(from, to);
        break;
    }
    text += QLatin1Char('\n');
    if (line.isStub)
        text += lineText("%1 is not placed; this way is the nearest site that takes it")
                    .arg(connection.fromSite < 0 ? from : to);
    else
        text += lineText("Length %1").arg(QLineF(line.from, line.to).length(), 0, 'f', 1);
    const QString broken = fromEngineText(connection.broken);
    return broken.isEmpty() ? text : text + QLatin1Char('\n') + asSentence(broken);
}

} // namespace mirn::zelchipview
