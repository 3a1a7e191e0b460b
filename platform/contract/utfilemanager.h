// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <memory>
#include <vector>

enum UT_ACCESS {
    UT_ACCESS_READ = 1, // the only mode served
};

class UT_STREAMPrivate;

// A file being read piece by piece. Made and owned by the file manager.
class ZELPLATFORM_EXPORT UT_STREAM
{
public:
    // Reads up to and including the next byte that is one of `separators` (NUL-terminated), at most `size` bytes, into
    // `buffer`, which must hold size + 1 bytes: a zero byte is kept behind the text. Gives the number of bytes read,
    // 0 at the end of the file, -1 after a read error or for unusable arguments. A longer piece comes in several reads.
    int readkey(unsigned char* buffer, int size, const char* separators);

private:
    friend class UT_FILEMANAGER;
    explicit UT_STREAM(std::unique_ptr<UT_STREAMPrivate> data);
    ~UT_STREAM();

    std::unique_ptr<UT_STREAMPrivate> d;
};

// Opens and closes files; one object, `ut_file`, serves all.
class ZELPLATFORM_EXPORT UT_FILEMANAGER
{
public:
    UT_FILEMANAGER();
    ~UT_FILEMANAGER();
    UT_FILEMANAGER(const UT_FILEMANAGER&) = delete;
    UT_FILEMANAGER& operator=(const UT_FILEMANAGER&) = delete;

    // Opens `path` (encoding of the file system) and gives a stream that stays the manager's until rm_ofile(), or null
    // when the file cannot be opened, is no regular file, or the mode is not served. A non-null `stream` is closed and
    // replaced. `flag` 1 reads bytes as they are, the only way there is.
    UT_STREAM* add_ofile(const char* path, UT_ACCESS mode, UT_STREAM* stream, unsigned char flag);

    // Closes and deletes the stream; null or a stream of another manager does nothing.
    void rm_ofile(UT_STREAM* stream);

private:
    std::vector<UT_STREAM*> m_streams;
};

extern ZELPLATFORM_EXPORT UT_FILEMANAGER ut_file;
