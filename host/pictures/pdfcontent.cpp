// SPDX-License-Identifier: MIT
#include "host/pictures/pdfcontent.h"

#include <algorithm>
#include <cmath>
#include <iterator>

namespace mirn::zelchip {

namespace {

constexpr double LargestNumber = 1e9; // readers of PDF know at least numbers of this size

} // namespace

// By hand, because a page has millions of numbers and formatting them is what takes the most time.
PdfContent& PdfContent::write(double number, int decimals)
{
    const double finite = std::isfinite(number) ? std::clamp(number, -LargestNumber, LargestNumber) : 0;
    const qint64 whole = std::llround(finite * std::pow(10, decimals));
    char digits[32];
    char* const end = std::end(digits);
    char* at = end;
    *--at = ' ';
    qint64 rest = std::abs(whole);
    bool isBegun = false;
    for (int place = 0; place <= decimals || rest > 0; ++place, rest /= 10) {
        if (place == decimals && isBegun)
            *--at = '.';
        isBegun = isBegun || rest % 10 != 0 || place >= decimals;
        if (isBegun)
            *--at = static_cast<char>('0' + rest % 10);
    }
    if (whole < 0)
        *--at = '-';
    m_text.append(at, static_cast<int>(end - at));
    return *this;
}

PdfContent& PdfContent::operator<<(const QPointF& point)
{
    return *this << point.x() << point.y();
}

PdfContent& PdfContent::operator<<(const QColor& color)
{
    return *this << color.redF() << color.greenF() << color.blueF();
}

// A contour that ends where it began is closed, so that its ends are joined.
PdfContent& PdfContent::operator<<(const QPainterPath& path)
{
    const int count = path.elementCount();
    QPointF start;
    for (int i = 0; i < count; ++i) {
        const QPainterPath::Element element = path.elementAt(i);
        *this << QPointF(element);
        if (element.isMoveTo()) {
            start = element;
            *this << "m";
            continue;
        }
        if (element.isCurveTo()) { // two more points follow
            *this << QPointF(path.elementAt(i + 1)) << QPointF(path.elementAt(i + 2)) << "c";
            i += 2;
        } else {
            *this << "l";
        }
        const bool isLast = i + 1 >= count || path.elementAt(i + 1).isMoveTo();
        if (isLast && QPointF(path.elementAt(i)) == start)
            *this << "h";
    }
    return *this;
}

PdfContent& PdfContent::operator<<(const char* words)
{
    m_text.append(words).append('\n');
    return *this;
}

PdfContent& PdfContent::operator<<(const QByteArray& words)
{
    m_text.append(words).append('\n');
    return *this;
}

} // namespace mirn::zelchip
