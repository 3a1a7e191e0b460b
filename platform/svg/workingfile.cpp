// SPDX-License-Identifier: MIT
#include "platform/svg/workingfile.h"

#include "platform/svg/workingimage.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <memory>

namespace zelsvg {

namespace {

// An open file; closed when it goes.
class Descriptor
{
public:
    explicit Descriptor(int number)
        : m_number(number)
    { }
    ~Descriptor()
    {
        if (m_number >= 0)
            ::close(m_number);
    }
    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    [[nodiscard]] int number() const { return m_number; }
    [[nodiscard]] bool isOpen() const { return m_number >= 0; }

    // False when the file ends before.
    bool readAll(char* buffer, std::size_t size) const
    {
        while (size > 0) {
            const ssize_t length = ::read(m_number, buffer, size);
            if (length == 0 || (length < 0 && errno != EINTR))
                return false;
            buffer += length > 0 ? length : 0;
            size -= length > 0 ? static_cast<std::size_t>(length) : 0;
        }
        return true;
    }

    bool writeAll(std::string_view bytes) const
    {
        while (!bytes.empty()) {
            const ssize_t length = ::write(m_number, bytes.data(), bytes.size());
            if (length < 0 && errno != EINTR)
                return false;
            bytes.remove_prefix(length > 0 ? static_cast<std::size_t>(length) : 0);
        }
        return true;
    }

private:
    int m_number;
};

[[nodiscard]] bool isSameFile(const DrawingKey& a, const DrawingKey& b)
{
    return a.size == b.size && a.seconds == b.seconds && a.nanoseconds == b.nanoseconds;
}

} // namespace

WorkingFile::WorkingFile(std::string path)
    : m_path(std::move(path))
{ }

bool WorkingFile::load(DrawingFile& source, Drawing& drawing) const
{
    drawing = {};
    const Descriptor file(m_path.empty() ? -1 : ::open(m_path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status;
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    const auto size = static_cast<std::uint64_t>(status.st_size);
    char bytes[sizeof(ImageHeader)];
    ImageHeader header;
    if (!file.readAll(bytes, sizeof bytes) || !readHeader({bytes, sizeof bytes}, size, header)
        || !isSameFile(header.key, source.key()) || !source.hashToEnd() || source.key().hash != header.key.hash)
        return false;
    const auto bodySize = static_cast<std::size_t>(size - sizeof header);
    const std::unique_ptr<char[]> body(new char[bodySize]);
    if (file.readAll(body.get(), bodySize) && readBody(header, {body.get(), bodySize}, drawing))
        return true;
    drawing = {};
    return false;
}

void WorkingFile::save(const DrawingKey& key, const Drawing& drawing) const
{
    if (m_path.empty())
        return;
    const std::string image = makeImage(key, drawing);
    if (image.empty())
        return;
    std::string beside = m_path + ".XXXXXX";
    const Descriptor file(::mkostemp(beside.data(), O_CLOEXEC));
    if (!file.isOpen())
        return;
    // mkostemp() gives it to the user alone; a project may be shared.
    const mode_t mask = ::umask(0);
    ::umask(mask);
    const bool isWritten = ::fchmod(file.number(), 0666 & ~mask) == 0 && file.writeAll(image);
    if (!isWritten || std::rename(beside.c_str(), m_path.c_str()) != 0)
        ::unlink(beside.c_str());
}

} // namespace zelsvg
