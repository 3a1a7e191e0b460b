// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <memory>
#include <vector>

enum UT_ACCESS {
    UT_ACCESS_READ = 1, // the only supported mode
};

class UT_STREAMPrivate;

// A file that is being read piece by piece. The file manager creates and owns it.
class ZELPLATFORM_EXPORT UT_STREAM
{
public:
    // Reads up to and including the next byte that is one of `separators` (NUL-terminated), but at most `size` bytes,
    // into `buffer`. The buffer must hold size + 1 bytes, because a zero byte is put behind the text. Returns the
    // number of bytes read, 0 at the end of the file, or -1 after a read error or for invalid arguments. A longer piece
    // is returned by several calls.
    int readkey(unsigned char* buffer, int size, const char* separators);

private:
    friend class UT_FILEMANAGER;
    explicit UT_STREAM(std::unique_ptr<UT_STREAMPrivate> data);
    ~UT_STREAM();

    std::unique_ptr<UT_STREAMPrivate> d;
};

// Opens files, and closes them at the latest in its destructor. One object, `ut_file`, serves the process.
class ZELPLATFORM_EXPORT UT_FILEMANAGER
{
public:
    UT_FILEMANAGER();
    ~UT_FILEMANAGER();
    UT_FILEMANAGER(const UT_FILEMANAGER&) = delete;
    UT_FILEMANAGER& operator=(const UT_FILEMANAGER&) = delete;

    // Opens `path` (in the encoding of the file system) and returns a stream, which the manager owns until rm_ofile().
    // Returns null if the file cannot be opened or is not a regular file, or if the mode is not supported. A non-null
    // `stream` is closed and replaced. `flag` is 1 for reading bytes as they are, which is the only way.
    UT_STREAM* add_ofile(const char* path, UT_ACCESS mode, UT_STREAM* stream, unsigned char flag);

    // Closes and deletes the stream. Does nothing for null or for a stream of another manager.
    void rm_ofile(UT_STREAM* stream);

private:
    std::vector<UT_STREAM*> m_streams;
};

extern ZELPLATFORM_EXPORT UT_FILEMANAGER ut_file;
