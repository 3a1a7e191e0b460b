// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/files.h"

#include <QTemporaryDir>

#include <cstdlib>

namespace zelfuzz {

inline void check(bool isRight)
{
    if (!isRight)
        std::abort();
}

// A file of this name in a folder that lasts as long as the program, with this content.
inline QString inputFile(const char* name, const char* data, std::size_t size)
{
    static const QTemporaryDir folder;
    return zeltest::writeFile(folder.filePath(name), QByteArray(data, static_cast<int>(size)));
}

} // namespace zelfuzz
