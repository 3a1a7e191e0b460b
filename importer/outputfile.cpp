// SPDX-License-Identifier: MIT
#include "importer/outputfile.h"

#include <QFile>

#include <fcntl.h>
#include <unistd.h>

#include <array>
#include <cerrno>
#include <charconv>
#include <cmath>

namespace mirn::zelimporter {

namespace {

constexpr std::size_t BufferBytes = std::size_t(1) << 20;
constexpr double Fineness = 1e4; // parts of a drawing unit

} // namespace

OutputFile::OutputFile(const QString& fileName)
    : m_fileName(fileName)
    , m_descriptor(::open(QFile::encodeName(fileName).constData(), O_WRONLY | O_CREAT | O_EXCL | O_CLOEXEC, 0666))
{
    if (m_descriptor < 0)
        fail();
    m_buffer.reserve(BufferBytes);
}

OutputFile::~OutputFile()
{
    if (m_descriptor >= 0)
        ::close(m_descriptor);
}

OutputFile& OutputFile::operator<<(std::string_view text)
{
    m_buffer += text;
    if (m_buffer.size() >= BufferBytes)
        flush();
    return *this;
}

OutputFile& OutputFile::operator<<(char c)
{
    m_buffer += c;
    return *this;
}

OutputFile& OutputFile::operator<<(int number)
{
    std::array<char, 16> digits;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), number).ptr;
    return *this << std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

OutputFile& OutputFile::operator<<(double number)
{
    std::array<char, 40> digits;
    const double rounded = std::round(number * Fineness) / Fineness;
    const auto end = std::to_chars(digits.data(), digits.data() + digits.size(), rounded + 0.0).ptr; // no -0
    return *this << std::string_view(digits.data(), static_cast<std::size_t>(end - digits.data()));
}

void OutputFile::fail()
{
    if (m_error.isEmpty())
        m_error = QStringLiteral("%1: %2").arg(m_fileName, qt_error_string(errno));
}

void OutputFile::flush()
{
    std::size_t done = 0;
    while (done < m_buffer.size() && !isFailed()) {
        const ssize_t count = ::write(m_descriptor, m_buffer.data() + done, m_buffer.size() - done);
        if (count >= 0)
            done += static_cast<std::size_t>(count);
        else if (errno != EINTR)
            fail();
    }
    m_buffer.clear();
}

QString OutputFile::close()
{
    flush();
    if (!isFailed() && ::fsync(m_descriptor) != 0)
        fail();
    if (m_descriptor >= 0 && ::close(m_descriptor) != 0)
        fail();
    m_descriptor = -1;
    return m_error;
}

} // namespace mirn::zelimporter
