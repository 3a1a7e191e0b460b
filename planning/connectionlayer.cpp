// SPDX-License-Identifier: MIT
#include "planning/connectionlayer.h"

#include "graphics/zelgraphicsscene.h"

#include <QGraphicsView>
#include <QLineF>
#include <QLinearGradient>
#include <QPaintEngine>
#include <QPainter>
#include <QPainterPath>
#include <QRegion>
#include <QVector>

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace mirn::zelchipview {

namespace {

constexpr int MostParts = 128; // that are painted one by one
constexpr double ReachOfPointer = 4; // pixels; all that follow as well

constexpr double StrongWidth = 1.8;
constexpr double FineWidth = 1.1;
constexpr double HaloBreadth = 1.4; // on each side
constexpr double StrongDot = 3.2; // radius
constexpr double FineDot = 1.6;
constexpr double LongestStub = 90;
constexpr int FadedAlpha = 110; // at the open end of a stub
constexpr double BendShare = 0.14; // how far a curve leaves the straight line, as a share of its length
constexpr double LargestBend = 42;

constexpr std::size_t MostUpdatedOneByOne = 16;
constexpr int ReachOfLine = static_cast<int>(LargestBend + StrongDot + HaloBreadth) + 2; // around the straight line

const QVector<qreal> StubDashes{3.0, 2.5}; // in widths of the line
const QColor Halo(255, 255, 255, 170);

// The point towards which the curve is bent: above the line, or to its right if it is upright. The channels of an IP
// are connected below, since clocks are often beside the very same channels.
QPointF bentMiddle(const QPointF& from, const QPointF& to, PlanLine::Kind kind)
{
    const QLineF line(from, to);
    if (line.length() < 1)
        return line.center();
    QPointF aside = QPointF(line.dy(), -line.dx()) / line.length();
    const bool isBelow = aside.y() > 0 || (aside.y() == 0 && aside.x() < 0);
    if (isBelow != (kind == PlanLine::Kind::Together))
        aside = -aside;
    return line.center() + aside * 2 * std::min(BendShare * line.length(), LargestBend);
}

bool isStubToHidden(const PlanLine& line, const QList<int>& visibleLayers)
{
    return line.isStub && !visibleLayers.contains(line.toLayer);
}

double distanceToSegment(const QPointF& point, const QPointF& from, const QPointF& to)
{
    const QPointF way = to - from;
    const double square = QPointF::dotProduct(way, way);
    const double share = square > 0 ? std::clamp(QPointF::dotProduct(point - from, way) / square, 0.0, 1.0) : 0.0;
    return QLineF(point, from + share * way).length();
}

} // namespace

ConnectionLayer::ConnectionLayer(QGraphicsView* view)
    : ZelViewLayer(view)
{
    connect(&m_ahead, &QTimer::timeout, this, [this] {
        if (!m_picture.drawAhead())
            m_ahead.stop();
    });
}

void ConnectionLayer::setLines(std::vector<PlanLine> lines, Style style)
{
    // A broken rule is not to be covered by lines that are in order.
    std::stable_partition(lines.begin(), lines.end(), [](const PlanLine& line) { return !line.isBroken; });
    if (lines == m_lines && (style == m_style || lines.empty()))
        return;
    updateLines();
    m_lines = std::move(lines);
    m_style = style;
    m_ahead.stop();
    if (hasFewLines())
        m_picture = LinePicture(); // which takes much memory
    m_picture.invalidate();
    updateLines();
}

// A few lines leave most of the view as it is.
void ConnectionLayer::updateLines()
{
    if (m_lines.size() > MostUpdatedOneByOne) {
        update();
        return;
    }
    for (const PlanLine& line : m_lines)
        update(QRectF(line.from, line.to).normalized(), ReachOfLine);
}

bool ConnectionLayer::hasFewLines() const
{
    return m_lines.size() <= MostLinesWithStubs;
}

QList<int> ConnectionLayer::visibleLayers() const
{
    auto* scene = view() ? qobject_cast<ZelGraphicsScene*>(view()->scene()) : nullptr;
    return scene ? scene->getVisibleLayers() : QList<int>();
}

PlanMarks ConnectionLayer::marks() const
{
    const auto isOpen = [](const PlanLine& line) { return line.isStub; };
    PlanMarks marks;
    marks.setFlag(PlanMark::Connection, !std::all_of(m_lines.begin(), m_lines.end(), isOpen));
    marks.setFlag(PlanMark::OpenEnd, hasFewLines() && std::any_of(m_lines.begin(), m_lines.end(), isOpen));
    marks.setFlag(PlanMark::Broken, !m_lines.empty() && m_lines.back().isBroken); // they are the last
    return marks;
}

// On a light plate, because the colours are made for drawings.
void ConnectionLayer::paintSample(QPainter& painter, const QRectF& area, PlanMark mark)
{
    PlanLine line;
    line.isBroken = mark == PlanMark::Broken;
    QPen pen(colorOf(line), StrongWidth, Qt::SolidLine, Qt::FlatCap);
    if (mark == PlanMark::OpenEnd)
        pen.setDashPattern(StubDashes);
    painter.fillRect(area, Qt::white);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(pen);
    painter.drawLine(QPointF(area.left(), area.center().y()), QPointF(area.right(), area.center().y()));
}

const PlanLine* ConnectionLayer::lineAt(QPoint position) const
{
    if (m_lines.empty() || !view() || !isShown())
        return nullptr;
    const PlanLine* nearest = nullptr;
    double least = ReachOfPointer;
    const QList<int> layers = visibleLayers();
    for (const PlanLine& line : m_lines) {
        const double distance = distanceTo(line, position);
        if (distance <= least && !isStubToHidden(line, layers)) {
            least = distance;
            nearest = &line;
        }
    }
    return nearest;
}

double ConnectionLayer::distanceTo(const PlanLine& line, const QPointF& position) const
{
    const QTransform transform = sceneToPicture();
    if (!hasFewLines())
        return line.isStub ? std::numeric_limits<double>::max()
                           : distanceToSegment(position, transform.map(line.from), transform.map(line.to));
    double least = std::numeric_limits<double>::max();
    const QList<QPolygonF> polygons = curveOf(line).toSubpathPolygons();
    for (const QPolygonF& polygon : polygons) {
        for (int n = 1; n < polygon.size(); ++n)
            least = std::min(least, distanceToSegment(position, polygon[n - 1], polygon[n]));
    }
    return least;
}

void ConnectionLayer::paint(QPainter& painter, const QRect& exposed)
{
    if (m_lines.empty() || !view())
        return;
    if (!hasFewLines()) {
        if (isOnScreen())
            paintPicture(painter, exposed);
        else
            paintThinLines(painter);
        return;
    }
    painter.setRenderHint(QPainter::Antialiasing, true);
    const double reach = StrongDot + HaloBreadth + 1;
    const QRectF touched = QRectF(exposed).adjusted(-reach, -reach, reach, reach);
    const QList<int> layers = visibleLayers();
    for (const PlanLine& line : m_lines) {
        if (isStubToHidden(line, layers))
            continue;
        const QPainterPath curve = curveOf(line);
        const QRectF bounds = curve.controlPointRect();
        // An upright line has a rectangle without a width, which intersects nothing.
        if (!touched.intersects(bounds.adjusted(0, 0, 1, 1)))
            continue;
        paintCurve(painter, curve, line);
        paintDots(painter, curve, line, layers);
    }
}

// A click exposes two small areas far apart. Painting all between them takes long, even though it is clipped.
void ConnectionLayer::paintPicture(QPainter& painter, const QRect& exposed)
{
    const QTransform device = painter.deviceTransform();
    const double ratio = device.m11();
    const auto inPixels = [ratio](const QRect& area) {
        return QRectF(QPointF(area.topLeft()) * ratio, QSizeF(area.size()) * ratio).toAlignedRect();
    };
    LinePicture::Target target;
    target.toPixels = sceneToPicture() * QTransform::fromScale(ratio, ratio);
    target.viewport = inPixels(pictureRect());
    target.ratio = ratio;
    const QRect whole = inPixels(exposed) & target.viewport;
    const QRegion clip = painter.paintEngine() ? painter.paintEngine()->systemClip() : QRegion();
    const QPoint widget(qRound(device.dx()), qRound(device.dy()));
    const QRegion parts
        = clip.isEmpty() || clip.rectCount() > MostParts ? QRegion(whole) : clip.translated(-widget) & whole;
    for (const QRect& part : parts) {
        target.part = part;
        m_picture.paint(painter, m_lines, target);
    }
    if (!m_picture.isDrawnAhead() && !m_ahead.isActive())
        m_ahead.start(0);
}

// The same lines as vectors.
void ConnectionLayer::paintThinLines(QPainter& painter) const
{
    const QTransform transform = sceneToPicture();
    const QRectF area = QRectF(pictureRect()).adjusted(-1, -1, 1, 1);
    painter.setRenderHint(QPainter::Antialiasing, true);
    for (const PlanLine& line : m_lines) {
        const QLineF shown = transform.map(QLineF(line.from, line.to));
        const QRectF bounds = QRectF(shown.p1(), shown.p2()).normalized().adjusted(0, 0, 1, 1);
        if (line.isStub || !bounds.intersects(area))
            continue;
        painter.setPen(thinPen(line));
        painter.drawLine(shown);
    }
}

QPainterPath ConnectionLayer::curveOf(const PlanLine& line) const
{
    const QTransform transform = sceneToPicture();
    const QPointF from = transform.map(line.from);
    QPointF to = transform.map(line.to);
    QPainterPath path(from);
    if (line.isStub) {
        const QLineF whole(from, to);
        path.lineTo(whole.length() > LongestStub ? whole.pointAt(LongestStub / whole.length()) : to);
    } else {
        path.quadTo(bentMiddle(from, to, line.kind), to);
    }
    return path;
}

void ConnectionLayer::paintCurve(QPainter& painter, const QPainterPath& curve, const PlanLine& line) const
{
    const bool isStrong = m_style == Style::Strong;
    const double width = isStrong || line.isBroken ? StrongWidth : FineWidth;
    const QPointF from = curve.elementAt(0);
    const QPointF to = curve.currentPosition();
    const QColor color = colorOf(line);
    QPen pen(color, width, Qt::SolidLine, Qt::RoundCap);
    if (line.isStub) {
        QLinearGradient fading(from, to);
        fading.setColorAt(0, color);
        fading.setColorAt(1, QColor(color.red(), color.green(), color.blue(), FadedAlpha));
        pen = QPen(fading, width, Qt::CustomDashLine, Qt::FlatCap);
        pen.setDashPattern(StubDashes);
    } else if (isStrong) {
        painter.strokePath(curve, QPen(Halo, width + 2 * HaloBreadth, Qt::SolidLine, Qt::RoundCap));
    }
    painter.strokePath(curve, pen);
}

void ConnectionLayer::paintDots(
    QPainter& painter, const QPainterPath& curve, const PlanLine& line, const QList<int>& layers) const
{
    const bool isStrong = m_style == Style::Strong;
    painter.setPen(isStrong ? QPen(Halo, HaloBreadth) : QPen(Qt::NoPen));
    painter.setBrush(colorOf(line));
    const double radius = isStrong ? StrongDot : FineDot;
    if (layers.contains(line.fromLayer))
        painter.drawEllipse(QPointF(curve.elementAt(0)), radius, radius);
    if (!line.isStub && layers.contains(line.toLayer))
        painter.drawEllipse(curve.currentPosition(), radius, radius);
}

} // namespace mirn::zelchipview
