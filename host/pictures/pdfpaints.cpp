// SPDX-License-Identifier: MIT
#include "host/pictures/pdfpaints.h"

#include "host/pictures/pdfcontent.h"
#include "host/pictures/pdffile.h"

#include <QLinearGradient>

#include <algorithm>

namespace mirn::zelchip {

namespace {

constexpr int Opaque = 255;

QByteArray alphaName(PdfPaints::Use use, int alpha)
{
    return (use == PdfPaints::Use::Fill ? "/A" : "/B") + QByteArray::number(alpha);
}

// What a gradient has along its line: colours, or how opaque it is.
enum class Along { Color, Opacity };

QByteArray valueOf(const QColor& color, Along what)
{
    PdfContent value;
    if (what == Along::Color)
        value << color;
    else
        value << color.alphaF();
    return '[' + value.text() + ']';
}

// The values between two stops each, one after the other.
QByteArray function(const QGradientStops& stops, Along what)
{
    QByteArray pieces;
    PdfContent bounds;
    QByteArray encode;
    for (int i = 0; i + 1 < stops.size(); ++i) {
        pieces += "<< /FunctionType 2 /Domain [0 1] /N 1 /C0 " + valueOf(stops[i].second, what) + " /C1 "
            + valueOf(stops[i + 1].second, what) + " >>\n";
        if (i > 0)
            bounds << stops[i].first;
        encode += "0 1 ";
    }
    return "<< /FunctionType 3 /Domain [0 1] /Functions [" + pieces + "] /Bounds [" + bounds.text() + "] /Encode ["
        + encode + "] >>";
}

QGradientStops fromEndToEnd(QGradientStops stops)
{
    if (stops.first().first > 0)
        stops.prepend({0, stops.first().second});
    if (stops.last().first < 1)
        stops.append({1, stops.last().second});
    return stops;
}

QByteArray shading(const QLinearGradient& gradient, const QTransform& transform, Along what)
{
    PdfContent ends;
    ends << transform.map(gradient.start()) << transform.map(gradient.finalStop());
    return "<< /ShadingType 2 /Extend [true true] /ColorSpace "
        + QByteArray(what == Along::Color ? "/DeviceRGB" : "/DeviceGray") + " /Coords [" + ends.text() + "]\n/Function "
        + function(fromEndToEnd(gradient.stops()), what) + " >>";
}

bool isTranslucent(const QGradient& gradient)
{
    const QGradientStops stops = gradient.stops();
    return std::any_of(stops.begin(), stops.end(), [](const QGradientStop& stop) { return stop.second.alpha() < 255; });
}

} // namespace

PdfPaints::PdfPaints(PdfFile& file, const QSizeF& page)
    : m_file(file)
    , m_page(page)
{ }

QByteArray PdfPaints::choose(const QBrush& brush, double opacity, const QTransform& transform, Use use)
{
    const auto* gradient
        = brush.style() == Qt::LinearGradientPattern ? static_cast<const QLinearGradient*>(brush.gradient()) : nullptr;
    if (gradient)
        return chooseAlpha(opacity, use) + chooseGradient(*gradient, brush.transform() * transform, use);
    PdfContent color;
    color << brush.color() << (use == Use::Fill ? "rg" : "RG");
    return chooseAlpha(brush.color().alphaF() * opacity, use) + color.text();
}

QByteArray PdfPaints::chooseAlpha(double alpha, Use use)
{
    const int level = qRound(alpha * Opaque);
    m_alphas[static_cast<int>(use)].insert(level);
    return alphaName(use, level) + " gs\n";
}

QByteArray PdfPaints::chooseGradient(const QLinearGradient& gradient, const QTransform& transform, Use use)
{
    const int pattern = addLater("<< /PatternType 2 /Shading " + shading(gradient, transform, Along::Color) + " >>");
    const QByteArray name = "/P" + QByteArray::number(pattern);
    m_patterns += name + ' ' + pdfReference(pattern) + ' ';
    const QByteArray chosen = use == Use::Fill ? "/Pattern cs " + name + " scn\n" : "/Pattern CS " + name + " SCN\n";
    return isTranslucent(gradient) ? mask(shading(gradient, transform, Along::Opacity)) + chosen : chosen;
}

// What is painted from now on shows as far as the shading is white.
QByteArray PdfPaints::mask(const QByteArray& shading)
{
    PdfContent box;
    box << 0 << 0 << m_page.width() << m_page.height();
    const QByteArray paint("/S sh");
    const int form = addLater("<< /Type /XObject /Subtype /Form /BBox [" + box.text()
        + "] /Group << /S /Transparency /CS /DeviceGray >>\n/Resources << /Shading << /S " + shading + " >> >> /Length "
        + QByteArray::number(paint.size()) + " >>\nstream\n" + paint + "\nendstream");
    const QByteArray name = "/M" + QByteArray::number(form);
    m_masks += name + " << /SMask << /S /Luminosity /G " + pdfReference(form) + " >> >>\n";
    return name + " gs\n";
}

int PdfPaints::addLater(const QByteArray& content)
{
    m_later.emplace_back(m_file.reserve(), content);
    return m_later.back().first;
}

QByteArray PdfPaints::write()
{
    for (const auto& [object, content] : m_later)
        m_file.write(object, content);
    QByteArray states = m_masks;
    for (const Use use : {Use::Fill, Use::Stroke}) {
        for (const int level : m_alphas[static_cast<int>(use)]) {
            PdfContent alpha;
            alpha << double(level) / Opaque;
            states += alphaName(use, level) + " << " + (use == Use::Fill ? "/ca " : "/CA ") + alpha.text() + ">>\n";
        }
    }
    return "/Pattern << " + m_patterns + ">>\n/ExtGState << " + states + ">>";
}

} // namespace mirn::zelchip
