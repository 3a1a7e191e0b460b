// SPDX-License-Identifier: MIT
#include "host/pictures/svgengine.h"

#include "host/pictures/picturepage.h"

#include <QBuffer>
#include <QFontInfo>
#include <QIODevice>
#include <QLinearGradient>
#include <QPainterPath>
#include <QPen>
#include <QPixmap>

namespace mirn::zelchip {

namespace {

QByteArray number(double value)
{
    constexpr int Digits = 9;
    return QByteArray::number(value, 'g', Digits);
}

QByteArray point(const QPointF& at)
{
    return number(at.x()) + ' ' + number(at.y());
}

QByteArray attribute(const char* name, const QByteArray& value)
{
    return QByteArray(" ") + name + "=\"" + value + '"';
}

QByteArray colorAttributes(const char* property, const char* opacity, const QColor& color)
{
    QByteArray text = attribute(property, color.name().toLatin1());
    if (color.alpha() != 255)
        text += attribute(opacity, number(color.alphaF()));
    return text;
}

QByteArray matrix(const QTransform& m)
{
    return "matrix(" + point({m.m11(), m.m12()}) + ' ' + point({m.m21(), m.m22()}) + ' ' + point({m.dx(), m.dy()})
        + ')';
}

// XML has no place for control characters, however they are written.
QByteArray escaped(QString text)
{
    for (QChar& character : text) {
        if (character.unicode() < ' ')
            character = QLatin1Char(' ');
    }
    return text.toHtmlEscaped().toUtf8();
}

QByteArray pathData(const QPainterPath& path)
{
    QByteArray data;
    for (int i = 0; i < path.elementCount(); ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        if (element.isMoveTo())
            data += 'M';
        else if (element.isLineTo())
            data += 'L';
        else
            data += element.isCurveTo() ? 'C' : ' '; // the points of a curve follow each other
        data += point(element);
    }
    return data;
}

const char* capOf(const QPen& pen)
{
    switch (pen.capStyle()) {
    case Qt::FlatCap:
        return "butt";
    case Qt::RoundCap:
        return "round";
    default:
        return "square";
    }
}

QByteArray fontAttributes(const QFont& font)
{
    const QFontInfo found(font);
    const QByteArray families = '\'' + escaped(font.family()) + "','" + escaped(found.family()) + "',sans-serif";
    QByteArray text = attribute("font-family", families)
        + attribute("font-size", number(font.pixelSize() > 0 ? font.pixelSize() : found.pixelSize()));
    if (font.bold())
        text += attribute("font-weight", "bold");
    if (font.italic())
        text += attribute("font-style", "italic");
    return text;
}

} // namespace

SvgEngine::SvgEngine(QIODevice& file, const QSizeF& size)
    : QPaintEngine(PicturePage::features())
    , m_file(file)
    , m_size(size)
{ }

bool SvgEngine::begin(QPaintDevice*)
{
    const QByteArray width = number(m_size.width());
    const QByteArray height = number(m_size.height());
    write("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n<svg xmlns=\"http://www.w3.org/2000/svg\" "
          "xmlns:xlink=\"http://www.w3.org/1999/xlink\" width=\""
        + width + "\" height=\"" + height + "\" viewBox=\"0 0 " + width + ' ' + height + "\">\n");
    return true;
}

bool SvgEngine::end()
{
    closeGroup();
    write("</svg>\n");
    return true;
}

// All at once: the changes of one shape are seldom a single property, and a group has them all.
void SvgEngine::updateState(const QPaintEngineState& state)
{
    m_textColor = state.pen().color();
    m_attributes = paint("fill", state.brush()) + stroke(state.pen());
    if (!state.transform().isIdentity())
        m_attributes += attribute("transform", matrix(state.transform()));
    if (state.opacity() < 1)
        m_attributes += attribute("opacity", number(state.opacity()));
}

QByteArray SvgEngine::paint(const char* property, const QBrush& brush)
{
    const bool isFill = qstrcmp(property, "fill") == 0;
    if (brush.style() == Qt::NoBrush)
        return attribute(property, "none");
    if (brush.style() != Qt::LinearGradientPattern)
        return colorAttributes(property, isFill ? "fill-opacity" : "stroke-opacity", brush.color());
    const auto* gradient = static_cast<const QLinearGradient*>(brush.gradient());
    const QByteArray name = 'g' + QByteArray::number(++m_gradients);
    QByteArray text = "<linearGradient gradientUnits=\"userSpaceOnUse\"" + attribute("id", name)
        + attribute("x1", number(gradient->start().x())) + attribute("y1", number(gradient->start().y()))
        + attribute("x2", number(gradient->finalStop().x())) + attribute("y2", number(gradient->finalStop().y())) + '>';
    const QGradientStops stops = gradient->stops();
    for (const QGradientStop& stop : stops)
        text += "<stop" + attribute("offset", number(stop.first))
            + colorAttributes("stop-color", "stop-opacity", stop.second) + "/>";
    write(text + "</linearGradient>\n");
    return attribute(property, "url(#" + name + ')');
}

QByteArray SvgEngine::stroke(const QPen& pen)
{
    if (pen.style() == Qt::NoPen)
        return {};
    const double width = pen.widthF() > 0 ? pen.widthF() : 1;
    QByteArray text = paint("stroke", pen.brush()) + attribute("stroke-width", number(width))
        + attribute("stroke-linecap", capOf(pen));
    if (pen.isCosmetic())
        text += attribute("vector-effect", "non-scaling-stroke");
    QByteArray dashes;
    const auto pattern = pen.dashPattern();
    for (const qreal dash : pattern)
        dashes += number(dash * width) + ' ';
    return dashes.isEmpty() ? text : text + attribute("stroke-dasharray", dashes.trimmed());
}

void SvgEngine::openGroup()
{
    if (m_isGroupOpen && m_group == m_attributes)
        return;
    closeGroup();
    write("<g" + m_attributes + ">\n");
    m_group = m_attributes;
    m_isGroupOpen = true;
}

void SvgEngine::closeGroup()
{
    if (m_isGroupOpen)
        write("</g>\n");
    m_isGroupOpen = false;
}

// A file that takes no more says so at its end.
void SvgEngine::write(const QByteArray& bytes)
{
    m_file.write(bytes);
}

void SvgEngine::drawPath(const QPainterPath& path)
{
    openGroup();
    const QByteArray rule = path.fillRule() == Qt::OddEvenFill ? attribute("fill-rule", "evenodd") : QByteArray();
    write("<path" + rule + attribute("d", pathData(path)) + "/>\n");
}

void SvgEngine::drawPolygon(const QPointF* points, int count, PolygonDrawMode mode)
{
    openGroup();
    QByteArray corners;
    for (int i = 0; i < count; ++i)
        corners += point(points[i]) + ' ';
    QByteArray kind = mode == PolylineMode ? "<polyline fill=\"none\"" : "<polygon";
    if (mode == OddEvenMode)
        kind += attribute("fill-rule", "evenodd");
    write(kind + attribute("points", corners.trimmed()) + "/>\n");
}

void SvgEngine::drawRects(const QRectF* rects, int count)
{
    openGroup();
    for (int i = 0; i < count; ++i) {
        const QRectF rect = rects[i].normalized();
        write("<rect" + attribute("x", number(rect.x())) + attribute("y", number(rect.y()))
            + attribute("width", number(rect.width())) + attribute("height", number(rect.height())) + "/>\n");
    }
}

// The pen is the colour of a text. Its length is that on the screen, whatever font the reader's system has.
void SvgEngine::drawTextItem(const QPointF& position, const QTextItem& item)
{
    const QByteArray text = escaped(item.text());
    if (text.trimmed().isEmpty())
        return;
    openGroup();
    write("<text xml:space=\"preserve\" stroke=\"none\"" + attribute("x", number(position.x()))
        + attribute("y", number(position.y())) + colorAttributes("fill", "fill-opacity", m_textColor)
        + fontAttributes(item.font()) + attribute("textLength", number(item.width()))
        + attribute("lengthAdjust", "spacingAndGlyphs") + '>' + text + "</text>\n");
}

void SvgEngine::drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source)
{
    QByteArray png;
    QBuffer buffer(&png);
    buffer.open(QIODevice::WriteOnly);
    pixmap.copy(source.toAlignedRect()).save(&buffer, "PNG");
    openGroup();
    write("<image preserveAspectRatio=\"none\"" + attribute("x", number(target.x()))
        + attribute("y", number(target.y())) + attribute("width", number(target.width()))
        + attribute("height", number(target.height()))
        + attribute("xlink:href", "data:image/png;base64," + png.toBase64()) + "/>\n");
}

} // namespace mirn::zelchip
