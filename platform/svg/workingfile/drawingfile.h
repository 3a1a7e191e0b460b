// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/bytesource.h"
#include "platform/svg/base/contenthash.h"

#include <cstdint>
#include <string>

namespace mirn::zelsvg {

// A time stamp of the file system.
struct FileTime
{
    std::int64_t seconds = 0;
    std::int64_t nanoseconds = 0;

    friend bool operator==(const FileTime& a, const FileTime& b)
    {
        return a.seconds == b.seconds && a.nanoseconds == b.nanoseconds;
    }
};

// What the file system says about a file. A file cannot be changed without changing at least one of these.
struct FileStamp
{
    std::uint64_t size = 0;
    FileTime modified; // last change of the content, unless somebody has set the time
    FileTime changed; // last change of content or attributes; only the system sets it
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
};

// Identifies the drawing from which a working file was made.
struct DrawingKey
{
    FileStamp stamp;
    std::uint64_t hash = 0; // hash of the content
    std::uint64_t isSettled = 0; // 1 if any later change would show in the stamp
};

// A drawing file that is open for reading; it owns the descriptor. Its content is hashed while it is read, because the
// hash says whether a working file belongs to it, and progress is reported to the current zelprogress.
class DrawingFile final : public DrawingSource
{
public:
    // File systems store times in steps of up to two seconds. A file that was changed less than that before it was
    // opened may change again with the same time stamp: it has not settled yet.
    static constexpr int CoarsestTime = 2;

    explicit DrawingFile(int secondsToSettle = CoarsestTime);
    ~DrawingFile() override;
    DrawingFile(const DrawingFile&) = delete;
    DrawingFile& operator=(const DrawingFile&) = delete;

    // Returns false, with a reason, for anything but a readable regular file.
    bool open(const std::string& path, std::string& reason);

    long read(char* buffer, std::size_t size) override;
    bool rewind() override;
    bool reportProgress(double share) override;
    [[nodiscard]] bool isCancelled() const { return m_isCancelled; }

    // The stamp at the time of open(), and the hash of what has been read since then or since rewind().
    [[nodiscard]] DrawingKey key() const;

    // Reads to the end only for the hash, without keeping the content. Returns false after a read error or when
    // cancelled.
    bool hashToEnd();

    // Whether as many bytes were read as the file had at the time of open().
    [[nodiscard]] bool isComplete() const { return m_readSize == m_key.stamp.size; }

private:
    const int m_secondsToSettle;
    int m_descriptor = -1;
    DrawingKey m_key; // without the hash
    std::uint64_t m_readSize = 0;
    ContentHash m_hash;
    bool m_isCancelled = false;
};

} // namespace mirn::zelsvg
