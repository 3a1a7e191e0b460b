// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/svgparser.h"
#include "tests/support/testmain.h"
#include "tests/support/textcases.h"

#include <QFile>
#include <QMap>
#include <QRegularExpression>
#include <QTemporaryDir>

#include <cmath>

// A record as a short text; see TestDrawing.
[[nodiscard]] inline QString describe(const zel_SingleGraphItem* item)
{
    const auto number = [](double value) {
        const double rounded = std::round(value * 1000.0) / 1000.0;
        return QString::number(rounded == 0.0 ? 0.0 : rounded, 'g', 12);
    };
    const auto point = [&](double x, double y) { return number(x) + ',' + number(y); };
    const auto color = [](unsigned int rgb) {
        static const QMap<unsigned int, QString> Names{{0xff0000, "red"}, {0xff00, "lime"}, {0xff, "blue"}};
        return Names.value(rgb, QString("#%1").arg(rgb, 6, 16, QChar('0')));
    };
    const auto fill = [&](unsigned int rgb) { return rgb == 0 ? QString() : ' ' + color(rgb); };
    if (const auto* line = dynamic_cast<const zel_Line*>(item)) {
        const QString ends = point(line->x1, line->y1) + ' ' + point(line->x2, line->y2);
        return QString("line %1 %2 %3").arg(ends, color(line->strokeColor), number(line->strokeWidth));
    }
    if (const auto* rect = dynamic_cast<const zel_Rect*>(item)) {
        const QString size = number(rect->width) + 'x' + number(rect->height);
        const QString place = QString("rect %1 %2").arg(point(rect->x, rect->y), size);
        const QString shape = place == "rect 0,0 1x1" ? "R" : place;
        if (!(rect->strokeWidth > 0.0))
            return shape + fill(rect->fillColor);
        const QString border = color(rect->strokeColor) + ' ' + number(rect->strokeWidth);
        return QString("%1 %2 %3").arg(shape, color(rect->fillColor), border);
    }
    if (const auto* polygon = dynamic_cast<const zel_Polygon*>(item)) {
        QString text = "polygon" + fill(polygon->fillColor);
        for (const zel_Point& corner : polygon->points)
            text += ' ' + point(corner.x, corner.y);
        return text;
    }
    if (const auto* text = dynamic_cast<const zel_Text*>(item)) {
        const QString turn = text->rotation != 0 ? QString(" turned %1").arg(text->rotation) : QString();
        const QString words = QString::fromLatin1(text->text.c_str());
        return QString("text '%1' %2%3%4").arg(words, point(text->x, text->y), fill(text->fillColor), turn);
    }
    return "unknown";
}

// A drawing written to a file and read by the parser, and its records as short texts, which tables compare at a glance:
//   line 0,0 10,0 red 1      from, to, colour, width
//   rect 1,2 3x4 red blue 1  corner, size, fill, and the border if there is one
//   polygon red 0,0 1,0 1,1  fill, corners
//   text 'A' 1,2 red         text, place, colour, and "turned 90" if it is
//   R red                    a rect 0,0 1x1
// Black is left out where it stands alone: shapes and texts are filled with it unless they say something else. Colours
// without a name here are #rrggbb. Numbers are rounded to three digits behind the point.
class TestDrawing
{
public:
    // The whole file.
    static TestDrawing fromFile(const QByteArray& content)
    {
        TestDrawing drawing;
        drawing.m_folder = std::make_unique<QTemporaryDir>();
        drawing.m_parser = std::make_unique<SVGParser>();
        const QString path = drawing.m_folder->filePath("drawing.svg");
        zeltest::writeFile(path, content);
        drawing.m_path = QFile::encodeName(path);
        drawing.m_isRead = drawing.m_parser->loadSVGElements(drawing.m_path.toStdString(), {});
        return drawing;
    }

    // The body of a root element of 100 x 100, with the namespaces declared and some abbreviations: <R is a rect
    // of 1 x 1, and size='2x3' stands for a width of 2 and a height of 3.
    static TestDrawing fromBody(const QByteArray& body)
    {
        static const QRegularExpression Size("\\bsize='([^'x]+)x([^']+)'");
        QString text = QString::fromUtf8(body).replace("<R", "<rect size='1x1'").replace("</R", "</rect");
        text.replace(Size, "width='\\1' height='\\2'");
        return fromFile("<svg xmlns='http://www.w3.org/2000/svg' xmlns:xlink='http://www.w3.org/1999/xlink' "
                        "xmlns:t='urn:tovanel:chip-drawing' width='100' height='100'>\n"
            + text.toUtf8() + "\n</svg>");
    }

    [[nodiscard]] bool isRead() const { return m_isRead; }
    [[nodiscard]] const SVGParser& parser() const { return *m_parser; }
    [[nodiscard]] const std::vector<zel_SingleGraphItem*>& items() const { return m_parser->getGraphicItems(); }

    // All records, joined by "; ".
    [[nodiscard]] QString records() const
    {
        QStringList texts;
        for (const zel_SingleGraphItem* item : items())
            texts.append(describe(item));
        return texts.join("; ");
    }

    // The message without the file name; empty after success.
    [[nodiscard]] QString error() const
    {
        const QByteArray message = QByteArray::fromStdString(m_parser->errorString());
        return QString::fromUtf8(message.startsWith(m_path) ? message.mid(m_path.size()) : message);
    }

    // All warnings, joined by "; ".
    [[nodiscard]] QString warnings() const
    {
        QStringList texts;
        for (const std::string& warning : m_parser->warnings())
            texts.append(QString::fromUtf8(warning.c_str()));
        return texts.join("; ");
    }

    template <typename Record> [[nodiscard]] const Record* record(std::size_t index) const
    {
        return index < items().size() ? dynamic_cast<const Record*>(items()[index]) : nullptr;
    }

private:
    TestDrawing() = default;

    std::unique_ptr<QTemporaryDir> m_folder;
    std::unique_ptr<SVGParser> m_parser;
    QByteArray m_path;
    bool m_isRead = false;
};

// The records of a drawing from such a body; the error where it cannot be read.
[[nodiscard]] inline QString recordsOf(const QByteArray& body)
{
    const TestDrawing drawing = TestDrawing::fromBody(body);
    return drawing.isRead() ? drawing.records() : drawing.error();
}
