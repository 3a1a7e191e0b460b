// SPDX-License-Identifier: MIT
#pragma once

#include "host/pictures/deflater.h"

#include <QByteArray>

#include <optional>
#include <vector>

class QIODevice;

namespace mirn::zelchip {

// The objects of a PDF file, written one after the other, and the table that finds them. It keeps where each object
// begins and nothing of what is in it.
class PdfFile final
{
public:
    explicit PdfFile(QIODevice& file); // not owned; may be sequential

    // Returns the number of an object that is written later.
    [[nodiscard]] int reserve();

    // Writes an object as a whole; add() and addStream() return its number.
    void write(int object, const QByteArray& content);
    int add(const QByteArray& content);
    int addStream(const QByteArray& content);

    // The same for a stream that comes piece by piece. No other object may be written before its end.
    void beginStream(int object);
    void append(const QByteArray& bytes);
    void endStream();

    // Writes the table, whose dictionary has these entries besides its own, and ends the file.
    void end(const QByteArray& entries);

private:
    void put(const QByteArray& bytes);
    void beginObject(int object);

    QIODevice& m_file;
    qint64 m_position = 0;
    std::vector<qint64> m_offsets; // of the objects 1, 2, 3, ...
    qint64 m_streamBegin = 0;
    int m_lengthObject = 0; // has the length of the stream, which is not known before its end
    std::optional<Deflater> m_deflater;
};

// A reference to an object, as other objects have it.
[[nodiscard]] QByteArray pdfReference(int object);

} // namespace mirn::zelchip
