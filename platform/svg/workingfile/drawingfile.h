// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/bytesource.h"
#include "platform/svg/base/contenthash.h"

#include <cstdint>
#include <string>

namespace zelsvg {

// A time of the file system.
struct FileTime
{
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;

    friend bool operator==(const FileTime& a, const FileTime& b)
    {
        return a.seconds == b.seconds && a.nanoseconds == b.nanoseconds;
    }
};

// What the file system says about a file. Nobody can change a file and leave all of it as it was.
struct FileStamp
{
    std::uint64_t size = 0;
    FileTime modified; // the content, as far as nobody has set the time
    FileTime changed; // anything; set by the system alone
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
};

// By what a working file recognises the drawing that it was made from.
struct DrawingKey
{
    FileStamp stamp;
    std::uint64_t hash = 0; // of the content
    std::uint64_t isSettled = 0; // 1: a later change would have shown in the stamp
};

// A drawing file that is open for reading. Its content is hashed while it is read, and the process's progress told.
class DrawingFile final : public DrawingSource
{
public:
    // File systems keep times in steps of up to two seconds. A file that was changed less than that before it was
    // opened may be changed once more at what counts as the same time: it has not settled yet.
    static constexpr int CoarsestTime = 2;

    explicit DrawingFile(int secondsToSettle = CoarsestTime);
    ~DrawingFile() override;
    DrawingFile(const DrawingFile&) = delete;
    DrawingFile& operator=(const DrawingFile&) = delete;

    // False, with `reason`, for anything but a readable regular file.
    bool open(const std::string& path, std::string& reason);

    long read(char* buffer, std::size_t size) override;
    bool rewind() override;
    bool isWanted(double share) override;
    [[nodiscard]] bool isCancelled() const { return m_isCancelled; }

    // The stamp as of open(); the hash of what has been read since then or since rewind().
    [[nodiscard]] DrawingKey key() const;

    // Reads on to the end for the hash alone, without a copy of the content. False after a read error.
    bool hashToEnd();

    // True when all that open() saw has been read.
    [[nodiscard]] bool isComplete() const { return m_readSize == m_key.stamp.size; }

private:
    const int m_secondsToSettle;
    int m_descriptor = -1;
    DrawingKey m_key; // without the hash
    std::uint64_t m_readSize = 0;
    ContentHash m_hash;
    bool m_isCancelled = false;
};

} // namespace zelsvg
