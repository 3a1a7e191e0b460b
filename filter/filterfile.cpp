// SPDX-License-Identifier: MIT
#include "filter/filterfile.h"

#include "platform/contract/utfilemanager.h"
#include "platform/contract/zeltext.h"

#include <vector>

namespace mirn::zelchipview {

namespace {

constexpr int LongestLine = 65535; // bytes; a longer line is read as several lines

// The result refers to the caller's bytes.
QByteArray withoutLineEnd(const unsigned char* bytes, int size)
{
    if (size > 0 && bytes[size - 1] == '\n')
        --size;
    if (size > 0 && bytes[size - 1] == '\r')
        --size;
    return QByteArray::fromRawData(reinterpret_cast<const char*>(bytes), size);
}

} // namespace

void addFilterLine(const QByteArray& line, FilterKinds& kinds)
{
    const auto first = line.indexOf('"');
    const auto last = line.lastIndexOf('"');
    const auto blank = line.lastIndexOf(' ');
    if (first < 0 || blank < 0)
        return;
    const QByteArray name = last > first ? line.mid(first + 1, last - first - 1) : line.mid(first + 1);
    kinds[fromEngineText(name.toStdString())].insert(line.mid(blank + 1).trimmed().toInt());
}

std::optional<FilterKinds> readFilterFile(const std::string& path)
{
    UT_STREAM* stream = ut_file.add_ofile(path.c_str(), UT_ACCESS_READ, nullptr, 1);
    if (!stream)
        return std::nullopt;
    FilterKinds kinds;
    std::vector<unsigned char> buffer(LongestLine + 1);
    for (int size = 0; (size = stream->readkey(buffer.data(), LongestLine, "\n")) > 0;)
        addFilterLine(withoutLineEnd(buffer.data(), size), kinds);
    ut_file.rm_ofile(stream);
    return kinds;
}

} // namespace mirn::zelchipview
