// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <string>
#include <string_view>

namespace mirn::zelimporter {

// A new file that is written from the beginning to the end. The first error is kept until close(), so that nobody has
// to ask after each piece.
class OutputFile
{
public:
    explicit OutputFile(const QString& fileName);
    ~OutputFile();
    OutputFile(const OutputFile&) = delete;
    OutputFile& operator=(const OutputFile&) = delete;

    OutputFile& operator<<(std::string_view text);
    OutputFile& operator<<(const char* text) { return *this << std::string_view(text); }
    OutputFile& operator<<(const std::string& text) { return *this << std::string_view(text); }
    OutputFile& operator<<(const QByteArray& text)
    {
        return *this << std::string_view(text.constData(), static_cast<std::size_t>(text.size()));
    }
    OutputFile& operator<<(char c);
    OutputFile& operator<<(int number);
    // Writes a length or a coordinate of a drawing, rounded to what nobody sees.
    OutputFile& operator<<(double number);

    [[nodiscard]] bool isFailed() const { return !m_error.isEmpty(); }

    // Forces the content to the disk. Returns an empty text for success, else what went wrong, with the file's name.
    [[nodiscard]] QString close();

private:
    void flush();
    void fail();

    const QString m_fileName;
    std::string m_buffer;
    int m_descriptor;
    QString m_error;
};

} // namespace mirn::zelimporter
