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

// The largest size of a journal or a placement file, in bytes.
constexpr qint64 LargestJournal = qint64(1) << 30;

// Reads a file line by line in blocks, so that files of any size and content cost little memory and time. It keeps only
// the beginning of a line that is longer than any command. It owns the open file.
class LineReader final
{
public:
    struct Line
    {
        std::string_view text; // without its end; valid until the next call
        bool hasEnd = true; // false if the file ends within it
        bool isTooLong = false; // whether the text is only the beginning of it
    };

    // The most bytes of a line that are kept, without its end.
    static constexpr std::size_t LongestLine = std::size_t(1) << 20;

    explicit LineReader(FileLayer& files = FileLayer::system())
        : m_files(files)
    { }
    ~LineReader();
    LineReader(const LineReader&) = delete;
    LineReader& operator=(const LineReader&) = delete;

    // Returns false, with the reason, if the file is not a regular one, too large or unreadable.
    [[nodiscard]] bool open(const QString& fileName, QString* error);

    // Returns false at the end of the file.
    [[nodiscard]] bool next(Line& line);

    // The offset after the last line that next() returned, in bytes.
    [[nodiscard]] qint64 position() const { return m_position; }

    // Why reading stopped before the end of the file, in the system's words; empty if it did not.
    [[nodiscard]] const QString& error() const { return m_error; }
    // The SHA-256 of what was read, hexadecimal.
    [[nodiscard]] QByteArray hash() const { return m_hash.result().toHex(); }

private:
    [[nodiscard]] bool fill();
    void keep(const char* begin, const char* end);

    FileLayer& m_files;
    int m_file = -1;
    std::vector<char> m_block;
    const char* m_begin = nullptr; // the unread part of the block
    const char* m_end = nullptr;
    std::string m_kept; // the part of the current line that was in earlier blocks
    bool m_isTooLong = false;
    qint64 m_position = 0;
    QString m_error;
    QCryptographicHash m_hash{QCryptographicHash::Sha256};
};

} // namespace mirn::zelchip
