// SPDX-License-Identifier: MIT
#pragma once

#include "host/pictures/pdfcontent.h"
#include "host/pictures/pdffile.h"
#include "host/pictures/pdffonts.h"
#include "host/pictures/pdfpaints.h"

#include <QBrush>
#include <QPaintEngine>
#include <QPen>
#include <QSizeF>

class QGlyphRun;

namespace mirn::zelchip {

// Writes what a QPainter draws as a PDF file of one page, compressed and shape by shape, so that it needs as much
// memory for a million of them as for one: QPdfWriter keeps the page until it is finished. Texts are texts. Clips are
// ignored; brushes are plain colours or linear gradients; transforms scale evenly.
class PdfEngine final : public QPaintEngine
{
public:
    // The file is not owned and may be sequential; the size is in pixels, of which an inch has `resolution`.
    PdfEngine(QIODevice& file, const QSizeF& size, int resolution);

    bool begin(QPaintDevice* device) override;
    bool end() override;
    void updateState(const QPaintEngineState& state) override;
    void drawPath(const QPainterPath& path) override;
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
    void drawRects(const QRectF* rects, int count) override;
    void drawTextItem(const QPointF& position, const QTextItem& item) override;
    void drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source) override;
    [[nodiscard]] Type type() const override { return QPaintEngine::User; }

    // A base class has versions of these that must not be hidden.
    using QPaintEngine::drawPolygon;
    using QPaintEngine::drawRects;

private:
    // Glyphs of one font on one base line.
    struct TextLine
    {
        int font;
        double size; // pixels
        QPointF start; // in the painter's units
        QByteArray codes; // as hexadecimal digits, and gaps
    };

    void beginShape(bool isFilled);
    void endShape(Qt::FillRule rule);
    void choose(const QByteArray& operators, QByteArray& chosen);
    [[nodiscard]] QByteArray penOperators();
    void drawRun(const QGlyphRun& run, const QPointF& position, const QString& text);
    void write(const TextLine& line);
    void flush(int most);

    PdfFile m_file;
    const QSizeF m_size; // in points, as all is that the file has
    const QTransform m_toPaper;
    PdfPaints m_paints;
    PdfFonts m_fonts;
    PdfContent m_content; // of the page, as far as it is not written
    int m_contentObject = 0;

    QPen m_pen;
    QBrush m_brush;
    double m_opacity = 1;
    QTransform m_transform; // to the paper
    double m_scale = 1;

    // The page's own state, as operators, and whether it is that of pen and brush.
    QByteArray m_stroke;
    QByteArray m_fill;
    bool m_isPenChosen = false;
    bool m_isBrushChosen = false;
    // Of the shape that is being painted.
    bool m_isFilled = false;
    bool m_isSaved = false; // the page's state, which a gradient changes too much
};

} // namespace mirn::zelchip
