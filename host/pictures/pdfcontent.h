// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QColor>
#include <QPainterPath>

namespace mirn::zelchip {

// The numbers and operators of a PDF page, a glyph or a pattern, as text that grows.
class PdfContent final
{
public:
    // Numbers have three decimals, which on a page is a thousandth of a point; fine() has six, for what is small
    // itself.
    PdfContent& operator<<(double number) { return write(number, 3); }
    PdfContent& operator<<(int number) { return write(number, 0); }
    PdfContent& fine(double number) { return write(number, 6); }
    PdfContent& operator<<(const QPointF& point);
    PdfContent& operator<<(const QColor& color); // its share of red, green and blue
    PdfContent& operator<<(const QPainterPath& path); // its lines and curves
    PdfContent& operator<<(const char* words);
    PdfContent& operator<<(const QByteArray& words);

    [[nodiscard]] const QByteArray& text() const { return m_text; }
    [[nodiscard]] qsizetype size() const { return m_text.size(); }
    void clear() { m_text.resize(0); } // keeps the memory

private:
    PdfContent& write(double number, int decimals);

    QByteArray m_text;
};

} // namespace mirn::zelchip
