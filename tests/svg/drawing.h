// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/svgparser.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

// A drawing written to a file and read by the parser, and its records as short texts, which tables compare at a glance:
//   line 0,0 10,0 #ff0000 1        from, to, colour, width
//   rect 1,2 3x4 #ff0000 #0000ff 1 corner, size, fill, and the border if there is one
//   polygon #ff0000 0,0 1,0 1,1    fill, corners
//   text 'A' 1,2 #ff0000 turned 90 text, place, colour, and the rotation if there is one
//   R #ff0000                      a rect 0,0 1x1
// Black is left out where it stands alone: shapes and texts are filled with it unless they say something else. Numbers
// are rounded to three digits behind the point.
class TestDrawing
{
public:
    // The whole file.
    static TestDrawing fromFile(const QByteArray& content);
    // What stands within a root element of 100 x 100, with the namespaces declared; <R is a rect of 1 x 1.
    static TestDrawing fromBody(const QByteArray& body);

    [[nodiscard]] bool isRead() const { return m_isRead; }
    [[nodiscard]] const SVGParser& parser() const { return *m_parser; }
    [[nodiscard]] const std::vector<zel_SingleGraphItem*>& items() const { return m_parser->getGraphicItems(); }

    // All records, joined by "; ".
    [[nodiscard]] QString records() const;

    // The message without the file name; empty after success.
    [[nodiscard]] QString error() const;

    // All warnings, joined.
    [[nodiscard]] QString warnings() const;

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

[[nodiscard]] QString describe(const zel_SingleGraphItem* item);

// The records of a drawing from such a body; the error where it cannot be read.
[[nodiscard]] QString recordsOf(const QByteArray& body);
