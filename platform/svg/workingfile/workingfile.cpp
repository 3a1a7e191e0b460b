// SPDX-License-Identifier: MIT
#include "platform/svg/workingfile/workingfile.h"

#include "platform/svg/base/filebytes.h"
#include "platform/svg/workingfile/workingimage.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdio>
#include <random>

namespace mirn::zelsvg {

namespace {

[[nodiscard]] bool isSameVersion(const FileStamp& a, const FileStamp& b)
{
    return a.size == b.size && a.modified == b.modified;
}

[[nodiscard]] bool isSameFile(const FileStamp& a, const FileStamp& b)
{
    return isSameVersion(a, b) && a.changed == b.changed && a.device == b.device && a.inode == b.inode;
}

// Collects output into pieces so large that the system stores them in large pages, which makes the file faster to map.
class LargePieces
{
public:
    explicit LargePieces(const FileDescriptor& file)
        : m_file(file)
    { }

    bool write(std::string_view bytes)
    {
        while (m_pending.size() + bytes.size() >= PieceSize) {
            const std::size_t part = PieceSize - m_pending.size();
            m_pending.append(bytes.substr(0, part));
            bytes.remove_prefix(part);
            if (!flush())
                return false;
        }
        m_pending.append(bytes);
        return true;
    }

    bool flush()
    {
        const bool isWritten = writeAll(m_file, m_pending);
        m_pending.clear();
        return isWritten;
    }

private:
    static constexpr std::size_t PieceSize = std::size_t(1) << 22;

    const FileDescriptor& m_file;
    std::string m_pending;
};

// Returns the descriptor of a new file, or -1; sets `name`. Unlike mkostemp(), which creates files for the user only,
// this leaves the permissions to the process's umask, because a project may be shared.
int newFileBeside(const std::string& path, std::string& name)
{
    constexpr int MostTries = 100;
    std::random_device random;
    for (int i = 0; i < MostTries; ++i) {
        char ending[16];
        std::snprintf(ending, sizeof ending, ".%08x", random());
        name = path + ending;
        const int number = ::open(name.c_str(), O_RDWR | O_CREAT | O_EXCL | O_CLOEXEC, 0666);
        if (number >= 0 || errno != EEXIST)
            return number;
    }
    return -1;
}

} // namespace

WorkingFile::WorkingFile(std::string path)
    : m_path(std::move(path))
{ }

bool WorkingFile::load(DrawingFile& source, Drawing& drawing) const
{
    drawing = {};
    const FileDescriptor file(m_path.empty() ? -1 : ::open(m_path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
    struct stat status;
    if (!file.isOpen() || ::fstat(file.number(), &status) != 0 || !S_ISREG(status.st_mode))
        return false;
    const auto size = static_cast<std::uint64_t>(status.st_size);
    char bytes[sizeof(ImageHeader)];
    ImageHeader header;
    if (!readAll(file, bytes, sizeof bytes) || !readHeader({bytes, sizeof bytes}, size, header)
        || !isSameVersion(header.key.stamp, source.key().stamp))
        return false;
    const bool isUntouched = header.key.isSettled && isSameFile(header.key.stamp, source.key().stamp);
    if (!isUntouched && (!source.hashToEnd() || source.key().hash != header.key.hash))
        return false;
    const std::shared_ptr<const char> image = bytesOf(file, static_cast<std::size_t>(size));
    if (!image || !showImage(header, image, drawing)) {
        drawing = {};
        return false;
    }
    if (!isUntouched && source.key().isSettled)
        save(source.key(), drawing);
    return true;
}

void WorkingFile::save(const DrawingKey& key, const Drawing& drawing) const
{
    if (m_path.empty())
        return;
    std::string beside;
    const FileDescriptor file(newFileBeside(m_path, beside));
    if (!file.isOpen())
        return;
    LargePieces pieces(file);
    const bool isWritten
        = writeImage(key, drawing, [&pieces](std::string_view bytes) { return pieces.write(bytes); }) && pieces.flush();
    if (!isWritten || std::rename(beside.c_str(), m_path.c_str()) != 0)
        ::unlink(beside.c_str());
}

} // namespace mirn::zelsvg
