// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QPaintEngine>
#include <QSizeF>

class QIODevice;

namespace mirn::zelchip {

// Writes what a QPainter draws as SVG, shape by shape, so that it needs as much memory for a million of them as for
// one. Texts are texts. Clips are ignored; brushes are plain colours or linear gradients.
class SvgEngine final : public QPaintEngine
{
public:
    SvgEngine(QIODevice& file, const QSizeF& size); // the file is not owned; the size is in pixels

    bool begin(QPaintDevice* device) override;
    bool end() override;
    void updateState(const QPaintEngineState& state) override;
    void drawPath(const QPainterPath& path) override;
    void drawPolygon(const QPointF* points, int count, PolygonDrawMode mode) override;
    void drawRects(const QRectF* rects, int count) override;
    void drawTextItem(const QPointF& position, const QTextItem& item) override;
    void drawPixmap(const QRectF& target, const QPixmap& pixmap, const QRectF& source) override;
    [[nodiscard]] Type type() const override { return QPaintEngine::SVG; }

    // A base class has versions of these that must not be hidden.
    using QPaintEngine::drawPolygon;
    using QPaintEngine::drawRects;

private:
    [[nodiscard]] QByteArray paint(const char* property, const QBrush& brush);
    [[nodiscard]] QByteArray stroke(const QPen& pen);
    void openGroup();
    void closeGroup();
    void write(const QByteArray& bytes);

    QIODevice& m_file;
    const QSizeF m_size;
    QByteArray m_attributes; // of the group that is wanted; those of the one that is open are in m_group
    QByteArray m_group;
    QColor m_textColor;
    bool m_isGroupOpen = false;
    int m_gradients = 0;
};

} // namespace mirn::zelchip
