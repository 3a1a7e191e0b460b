// SPDX-License-Identifier: MIT
#include "tests/svg/drawing.h"

#include "tests/support/testmain.h"

#include <QFile>
#include <QStringList>

#include <cmath>

namespace {

[[nodiscard]] QString number(double value)
{
    const double rounded = std::round(value * 1000.0) / 1000.0;
    return QString::number(rounded == 0.0 ? 0.0 : rounded, 'g', 12);
}

[[nodiscard]] QString point(double x, double y)
{
    return number(x) + QLatin1Char(',') + number(y);
}

[[nodiscard]] QString color(unsigned int rgb)
{
    return QStringLiteral("#%1").arg(rgb, 6, 16, QLatin1Char('0'));
}

[[nodiscard]] QString fill(unsigned int rgb)
{
    return rgb == 0 ? QString() : QLatin1Char(' ') + color(rgb);
}

} // namespace

TestDrawing TestDrawing::fromFile(const QByteArray& content)
{
    TestDrawing drawing;
    drawing.m_folder = std::make_unique<QTemporaryDir>();
    drawing.m_parser = std::make_unique<SVGParser>();
    const QString path = drawing.m_folder->filePath(QStringLiteral("drawing.svg"));
    zeltest::writeFile(path, content);
    drawing.m_path = QFile::encodeName(path);
    drawing.m_isRead = drawing.m_parser->loadSVGElements(drawing.m_path.toStdString(), {});
    return drawing;
}

TestDrawing TestDrawing::fromBody(const QByteArray& body)
{
    return fromFile("<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
                    "xmlns:tovanel='urn:tovanel:chip-drawing' width='100' height='100'>\n"
        + QByteArray(body).replace("<R", "<rect width='1' height='1'").replace("</R", "</rect") + "\n</svg>");
}

QString TestDrawing::records() const
{
    QStringList texts;
    for (const zel_SingleGraphItem* item : items())
        texts.append(describe(item));
    return texts.join(QStringLiteral("; "));
}

QString TestDrawing::error() const
{
    const QByteArray message = QByteArray::fromStdString(m_parser->errorString());
    return QString::fromUtf8(message.startsWith(m_path) ? message.mid(m_path.size()) : message);
}

QString TestDrawing::warnings() const
{
    QStringList texts;
    for (const std::string& warning : m_parser->warnings())
        texts.append(QString::fromUtf8(warning.c_str()));
    return texts.join(QStringLiteral("; "));
}

QString describe(const zel_SingleGraphItem* item)
{
    if (const auto* line = dynamic_cast<const zel_Line*>(item)) {
        return QStringLiteral("line %1 %2 %3 %4")
            .arg(point(line->x1, line->y1), point(line->x2, line->y2), color(line->strokeColor),
                number(line->strokeWidth));
    }
    if (const auto* rect = dynamic_cast<const zel_Rect*>(item)) {
        const QString place
            = QStringLiteral("rect %1 %2x%3").arg(point(rect->x, rect->y), number(rect->width), number(rect->height));
        const QString shape = place == QStringLiteral("rect 0,0 1x1") ? QStringLiteral("R") : place;
        if (!(rect->strokeWidth > 0.0))
            return shape + fill(rect->fillColor);
        return QStringLiteral("%1 %2 %3 %4")
            .arg(shape, color(rect->fillColor), color(rect->strokeColor), number(rect->strokeWidth));
    }
    if (const auto* polygon = dynamic_cast<const zel_Polygon*>(item)) {
        QString text = QStringLiteral("polygon") + fill(polygon->fillColor);
        for (const zel_Point& corner : polygon->points)
            text += QLatin1Char(' ') + point(corner.x, corner.y);
        return text;
    }
    if (const auto* text = dynamic_cast<const zel_Text*>(item)) {
        const QString turn = text->rotation != 0 ? QStringLiteral(" turned %1").arg(text->rotation) : QString();
        return QStringLiteral("text '%1' %2%3%4")
            .arg(QString::fromLatin1(text->text.c_str()), point(text->x, text->y), fill(text->fillColor), turn);
    }
    return QStringLiteral("unknown");
}

QString recordsOf(const QByteArray& body)
{
    const TestDrawing drawing = TestDrawing::fromBody(body);
    return drawing.isRead() ? drawing.records() : drawing.error();
}
