// SPDX-License-Identifier: MIT
#include "host/pictures/pdfengine.h"

#include "host/pictures/picturepage.h"

#include <QGlyphRun>
#include <QImage>
#include <QPainter>
#include <QPixmap>
#include <QTextLayout>

#include <algorithm>
#include <cmath>

namespace mirn::zelchip {

namespace {

constexpr int PageBlock = 65536; // bytes of the page that wait to be compressed
constexpr double PointsPerInch = 72;
constexpr double ThousandthsOfEm = 1000;

bool isGradient(const QBrush& brush)
{
    return brush.style() == Qt::LinearGradientPattern;
}

int capNumber(const QPen& pen)
{
    if (pen.capStyle() == Qt::FlatCap)
        return 0;
    return pen.capStyle() == Qt::RoundCap ? 1 : 2;
}

int joinNumber(const QPen& pen)
{
    if (pen.joinStyle() == Qt::RoundJoin)
        return 1;
    return pen.joinStyle() == Qt::BevelJoin ? 2 : 0;
}

// A line of text, with the origin at its beginning on the base line.
QList<QGlyphRun> shaped(QTextLayout& layout)
{
    layout.beginLayout();
    QTextLine line = layout.createLine();
    if (line.isValid()) {
        line.setNumColumns(static_cast<int>(layout.text().size()));
        line.setPosition(QPointF(0, -line.ascent()));
    }
    layout.endLayout();
    return layout.glyphRuns();
}

QByteArray codeDigits(int code)
{
    return QByteArray::number(code, 16).rightJustified(2, '0');
}

// Whether each glyph is that of the character in the same place.
bool isOneToOne(const QList<QGlyphRun>& runs, const QString& text)
{
    return runs.size() == 1 && runs.first().glyphIndexes().size() == text.size() && !runs.first().isRightToLeft();
}

// What readers take for the text of the glyphs until "EMC".
QByteArray actualText(const QString& text)
{
    QByteArray digits("feff");
    for (const QChar character : text)
        digits += QByteArray::number(character.unicode(), 16).rightJustified(4, '0');
    return "/Span << /ActualText <" + digits + "> >> BDC";
}

} // namespace

PdfEngine::PdfEngine(QIODevice& file, const QSizeF& size, int resolution)
    : QPaintEngine(PicturePage::features())
    , m_file(file)
    , m_size(size * PointsPerInch / resolution)
    , m_toPaper(PointsPerInch / resolution, 0, 0, -PointsPerInch / resolution, 0, m_size.height())
    , m_paints(m_file, m_size)
{ }

bool PdfEngine::begin(QPaintDevice*)
{
    m_contentObject = m_file.reserve();
    m_file.beginStream(m_contentObject);
    return true;
}

bool PdfEngine::end()
{
    flush(0);
    m_file.endStream();
    const QByteArray fonts = m_fonts.write(m_file);
    const QByteArray resources = "<< /Font << " + fonts + ">>\n" + m_paints.write() + " >>";
    const int pages = m_file.reserve();
    PdfContent box;
    box << 0 << 0 << m_size.width() << m_size.height();
    const int page = m_file.add("<< /Type /Page /Parent " + pdfReference(pages) + " /MediaBox [" + box.text()
        + "] /Contents " + pdfReference(m_contentObject) + "\n/Group << /S /Transparency /CS /DeviceRGB >> /Resources "
        + resources + " >>");
    m_file.write(pages, "<< /Type /Pages /Count 1 /Kids [" + pdfReference(page) + "] >>");
    const int catalog = m_file.add("<< /Type /Catalog /Pages " + pdfReference(pages) + " >>");
    const int information = m_file.add("<< /Creator (zelchip) >>");
    m_file.end("/Root " + pdfReference(catalog) + " /Info " + pdfReference(information));
    return true;
}

void PdfEngine::updateState(const QPaintEngineState& state)
{
    const QTransform transform = state.transform() * m_toPaper;
    const double scale = std::sqrt(std::abs(transform.determinant()));
    const bool isOther = scale != m_scale || state.opacity() != m_opacity;
    m_isPenChosen = m_isPenChosen && !isOther && state.pen() == m_pen;
    m_isBrushChosen = m_isBrushChosen && !isOther && state.brush() == m_brush;
    m_pen = state.pen();
    m_brush = state.brush();
    m_opacity = state.opacity();
    m_transform = transform;
    m_scale = scale;
}

// A pen of width 0 is a pixel wide.
QByteArray PdfEngine::penOperators()
{
    const double unit = m_pen.isCosmetic() ? m_toPaper.m11() : m_scale;
    const double width = m_pen.widthF() > 0 ? m_pen.widthF() * unit : m_toPaper.m11();
    PdfContent operators;
    operators.fine(width) << "w" << capNumber(m_pen) << "J" << joinNumber(m_pen) << "j";
    if (joinNumber(m_pen) == 0)
        operators << std::max(1.0, m_pen.miterLimit()) << "M";
    PdfContent dashes;
    const auto pattern = m_pen.dashPattern();
    for (const qreal dash : pattern)
        dashes.fine(dash * width);
    operators << '[' + dashes.text() + "] 0 d";
    return operators.text() + m_paints.choose(m_pen.brush(), m_opacity, m_transform, PdfPaints::Use::Stroke);
}

void PdfEngine::choose(const QByteArray& operators, QByteArray& chosen)
{
    if (operators == chosen && !m_isSaved)
        return;
    m_content << operators;
    if (!m_isSaved)
        chosen = operators;
}

void PdfEngine::beginShape(bool isFilled)
{
    m_isFilled = isFilled && m_brush.style() != Qt::NoBrush;
    const bool isStroked = m_pen.style() != Qt::NoPen;
    m_isSaved = (isStroked && isGradient(m_pen.brush())) || (m_isFilled && isGradient(m_brush));
    if (m_isSaved)
        m_content << "q";
    if (isStroked && (!m_isPenChosen || m_isSaved))
        choose(penOperators(), m_stroke);
    if (m_isFilled && (!m_isBrushChosen || m_isSaved))
        choose(m_paints.choose(m_brush, m_opacity, m_transform, PdfPaints::Use::Fill), m_fill);
    m_isPenChosen = m_isPenChosen || (isStroked && !m_isSaved);
    m_isBrushChosen = m_isBrushChosen || (m_isFilled && !m_isSaved);
}

void PdfEngine::endShape(Qt::FillRule rule)
{
    const bool isEvenOdd = rule == Qt::OddEvenFill;
    if (m_pen.style() == Qt::NoPen)
        m_content << (!m_isFilled ? "n" : isEvenOdd ? "f*" : "f");
    else
        m_content << (!m_isFilled ? "S" : isEvenOdd ? "B*" : "B");
    if (m_isSaved)
        m_content << "Q";
    m_isSaved = false;
    flush(PageBlock);
}

void PdfEngine::flush(int most)
{
    if (m_content.size() <= most)
        return;
    m_file.append(m_content.text());
    m_content.clear();
}

void PdfEngine::drawPath(const QPainterPath& path)
{
    beginShape(true);
    m_content << m_transform.map(path);
    endShape(path.fillRule());
}

void PdfEngine::drawPolygon(const QPointF* points, int count, PolygonDrawMode mode)
{
    beginShape(mode != PolylineMode);
    for (int i = 0; i < count; ++i)
        m_content << m_transform.map(points[i]) << (i == 0 ? "m" : "l");
    if (mode != PolylineMode)
        m_content << "h";
    endShape(mode == OddEvenMode ? Qt::OddEvenFill : Qt::WindingFill);
}

void PdfEngine::drawRects(const QRectF* rects, int count)
{
    beginShape(true);
    for (int i = 0; i < count; ++i) {
        const QRectF rect = rects[i].normalized();
        if (m_transform.type() > QTransform::TxScale) {
            QPainterPath turned;
            turned.addRect(rect);
            m_content << m_transform.map(turned);
            continue;
        }
        const QRectF mapped = m_transform.mapRect(rect);
        m_content << mapped.topLeft() << mapped.width() << mapped.height() << "re";
    }
    endShape(Qt::WindingFill);
}

// The pen is the colour of a text. It is shaped anew, because what a QTextItem knows of its glyphs is Qt's own.
void PdfEngine::drawTextItem(const QPointF& position, const QTextItem& item)
{
    const QString text = item.text();
    if (text.trimmed().isEmpty())
        return;
    choose(m_paints.choose(m_pen.color(), m_opacity, m_transform, PdfPaints::Use::Fill), m_fill);
    m_isBrushChosen = false;
    QTextLayout layout(text, item.font(), paintDevice());
    const QList<QGlyphRun> runs = shaped(layout);
    const bool isKnown = isOneToOne(runs, text);
    if (!isKnown)
        m_content << actualText(text);
    m_content << "BT";
    for (const QGlyphRun& run : runs)
        drawRun(run, position, isKnown ? text : QString());
    m_content << "ET";
    if (!isKnown)
        m_content << "EMC";
    flush(PageBlock);
}

// Each glyph stands where the layout has it: what its width does not say is a number behind it. In another font, and at
// another height, the line begins anew.
void PdfEngine::drawRun(const QGlyphRun& run, const QPointF& position, const QString& text)
{
    const int face = m_fonts.face(run.rawFont());
    const auto indexes = run.glyphIndexes();
    const auto places = run.positions();
    TextLine line{-1, run.rawFont().pixelSize(), {}, {}};
    QPointF end;
    for (int i = 0; i < indexes.size(); ++i) {
        const PdfFonts::Glyph glyph = m_fonts.glyph(face, indexes[i], text.isEmpty() ? QChar() : text[i]);
        const int gap = qRound((end.x() - places[i].x()) * ThousandthsOfEm / line.size);
        if (glyph.font != line.font || places[i].y() != end.y()) {
            write(line);
            line = {glyph.font, line.size, position + places[i], {}};
        } else if (gap != 0) {
            line.codes += '>' + QByteArray::number(gap) + '<';
        }
        line.codes += codeDigits(glyph.code);
        end = places[i] + QPointF(glyph.width * line.size / ThousandthsOfEm, 0);
    }
    write(line);
}

void PdfEngine::write(const TextLine& line)
{
    if (line.codes.isEmpty())
        return;
    m_content << PdfFonts::name(line.font);
    m_content.fine(line.size * m_scale) << "Tf" << m_transform.m11() / m_scale << m_transform.m12() / m_scale
                                        << -m_transform.m21() / m_scale << -m_transform.m22() / m_scale
                                        << m_transform.map(line.start) << "Tm"
                                        << "[<" + line.codes + ">] TJ";
}

// Nothing that zelchip has on paper is made of pixels, so this is written the simplest way, and on white.
void PdfEngine::drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source)
{
    QImage image(source.size().toSize(), QImage::Format_RGB888);
    image.fill(Qt::white);
    QPainter(&image).drawPixmap(QPointF(), pixmap, source);
    const QRectF area = m_transform.mapRect(target);
    m_content << "q" << area.width() << 0 << 0 << area.height() << area.topLeft() << "cm";
    m_content << "BI /CS /RGB /BPC 8 /F /AHx /W" << image.width() << "/H" << image.height() << "ID";
    for (int y = 0; y < image.height(); ++y)
        m_content << QByteArray::fromRawData(reinterpret_cast<const char*>(image.constScanLine(y)), image.width() * 3)
                         .toHex();
    m_content << "> EI Q";
    flush(PageBlock);
}

} // namespace mirn::zelchip
