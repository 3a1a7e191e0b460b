// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/filelayer.h"

#include <QByteArray>
#include <QCryptographicHash>
#include <QString>

#include <string>
#include <string_view>
#include <vector>

namespace mirn::zelchip {

// The bytes that a journal or a placement file may have.
constexpr qint64 LargestJournal = qint64(1) << 30;

// Reads a file line by line in blocks, so that a file of any size and content costs little memory and time. Of a line
// that is longer than any command only the beginning is kept.
class LineReader final
{
public:
    struct Line
    {
        std::string_view text; // without its end; until the next call
        bool hasEnd = true; // else the file ends in it
        bool isTooLong = false; // not all of it is in the text
    };

    // Bytes of a line without its end.
    static constexpr std::size_t LongestLine = std::size_t(1) << 20;

    explicit LineReader(FileLayer& files = FileLayer::system())
        : m_files(files)
    { }
    ~LineReader();
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    // False, with the reason, when the file is no regular one, too large or unreadable.
    [[nodiscard]] bool open(const QString& fileName, QString* error);

    // False at the end of the file.
    [[nodiscard]] bool next(Line& line);

    // In bytes from the beginning of the file: behind the last line that next() returned.
    [[nodiscard]] qint64 position() const { return m_position; }

    // At the end of the file: why it is not its true end, in the system's words; empty otherwise.
    [[nodiscard]] const QString& error() const { return m_error; }
    // The SHA-256 of what was read, hexadecimal.
    [[nodiscard]] QByteArray hash() const { return m_hash.result().toHex(); }

private:
    [[nodiscard]] bool fill();
    void keep(const char* begin, const char* end);

    FileLayer& m_files;
    int m_file = -1;
    std::vector<char> m_block;
    const char* m_begin = nullptr; // of what of the block was not read yet
    const char* m_end = nullptr;
    std::string m_kept; // the part of a line that stood in earlier blocks
    bool m_isTooLong = false;
    qint64 m_position = 0;
    QString m_error;
    QCryptographicHash m_hash{QCryptographicHash::Sha256};
};

} // namespace mirn::zelchip
