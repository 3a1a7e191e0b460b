// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/filelayer.h"

#include <QByteArray>
#include <QString>

namespace mirn::zelchip {

struct FileReplacement
{
    bool isDone = false; // the name stands for the new content, whether or not that is on the disk for sure
    QString error; // the system's words; empty: it is on the disk
};

// Puts a content into the place of a file, which need not exist; its folder must. Whenever the program or the machine
// stops, the name stands for the old content or for the new one, whole: it is written beside, forced to the disk and
// renamed, and then the folder is forced to the disk. A link is replaced, not what it points to. The permissions of a
// file that is replaced are kept.
//
// The file beside is "NAME.part-1" or the next free number. A program that is killed leaves it behind; who is the only
// one to write the file, because it has a lock, lets it be removed first.
enum class Leftovers { Stay, AreRemoved };
[[nodiscard]] FileReplacement replaceFile(const QString& fileName, const QByteArray& content,
    FileLayer& files = FileLayer::system(), Leftovers leftovers = Leftovers::Stay);

// Writes all of it; false, with errno, where the system did not take it.
[[nodiscard]] bool writeAll(FileLayer& files, int file, const QByteArray& bytes);

// Forces to the disk which files a folder has. True also where the file system has nothing of the kind.
[[nodiscard]] bool syncFolder(FileLayer& files, const QString& folder);

} // namespace mirn::zelchip
