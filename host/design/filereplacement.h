// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/filebeside.h"
#include "host/design/filelayer.h"

#include <QByteArray>
#include <QString>

namespace mirn::zelchip {

struct FileReplacement
{
    bool isDone = false; // the new content has its name, even if it may not be on the disk yet
    QString error; // the system's words; empty if the content is on the disk
};

// Replaces the content of a file atomically. The file need not exist, its folder must. Whenever the program or the
// machine stops, the file has either its old content or all of the new one: the new content is written to a file beside
// it, synced and renamed, then the folder is synced. A symbolic link is replaced, not its target. The permissions of a
// replaced file are kept.
//
// The file beside it is "NAME.part-1" or the next free number. A killed program leaves it behind; a caller whose lock
// makes it the only writer passes AreRemoved, which removes "NAME.part-1" first.
using Leftovers = FileBeside::Leftovers;
[[nodiscard]] FileReplacement replaceFile(const QString& fileName, const QByteArray& content,
    FileLayer& files = FileLayer::system(), Leftovers leftovers = Leftovers::Stay);

// Syncs a folder, so that its names are on the disk. Returns true as well if the file system cannot sync folders.
[[nodiscard]] bool syncFolder(FileLayer& files, const QString& folder);

} // namespace mirn::zelchip
