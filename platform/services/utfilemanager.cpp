// SPDX-License-Identifier: MIT
#include "platform/contract/utfilemanager.h"

#include <QFile>
#include <QFileInfo>

#include <algorithm>
#include <cstring>

UT_FILEMANAGER ut_file;

// Reads the file in blocks: reading a 50 MB file byte by byte with QFile would take seconds.
class UT_STREAMPrivate
{
public:
    explicit UT_STREAMPrivate(const QString& path)
        : file(path)
    { }

    // Returns false at the end of the file or after an error.
    bool fill()
    {
        position = 0;
        available = file.read(block, sizeof block);
        return available > 0;
    }

    QFile file;
    char block[1 << 16];
    qint64 position = 0;
    qint64 available = 0;
};

UT_STREAM::UT_STREAM(std::unique_ptr<UT_STREAMPrivate> data)
    : d(std::move(data))
{ }

UT_STREAM::~UT_STREAM() = default;

int UT_STREAM::readkey(unsigned char* buffer, int size, const char* separators)
{
    if (!buffer || size <= 0 || !separators)
        return -1;
    int count = 0;
    bool isComplete = false;
    while (!isComplete && count < size && (d->position < d->available || d->fill())) {
        const char* begin = d->block + d->position;
        const char* end = begin + std::min<qint64>(d->available - d->position, size - count);
        const char* separator = std::find_first_of(begin, end, separators, separators + std::strlen(separators));
        isComplete = separator != end;
        const auto length = static_cast<int>((isComplete ? separator + 1 : end) - begin);
        std::memcpy(buffer + count, begin, static_cast<std::size_t>(length));
        count += length;
        d->position += length;
    }
    buffer[count] = 0;
    return count == 0 && d->available < 0 ? -1 : count;
}

UT_FILEMANAGER::UT_FILEMANAGER() = default;

UT_FILEMANAGER::~UT_FILEMANAGER()
{
    for (UT_STREAM* stream : m_streams)
        delete stream;
}

UT_STREAM* UT_FILEMANAGER::add_ofile(const char* path, UT_ACCESS mode, UT_STREAM* stream, unsigned char)
{
    rm_ofile(stream);
    if (!path || mode != UT_ACCESS_READ)
        return nullptr;
    auto data = std::make_unique<UT_STREAMPrivate>(QFile::decodeName(path));
    // Only regular files are opened, because opening a pipe would wait for a writer.
    if (!QFileInfo(data->file).isFile() || !data->file.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return nullptr;
    m_streams.push_back(new UT_STREAM(std::move(data))); // deleted by rm_ofile(); its destructor is private
    return m_streams.back();
}

void UT_FILEMANAGER::rm_ofile(UT_STREAM* stream)
{
    const auto found = std::find(m_streams.begin(), m_streams.end(), stream);
    if (found == m_streams.end())
        return;
    delete *found;
    m_streams.erase(found);
}
