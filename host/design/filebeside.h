// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/filelayer.h"

#include <QByteArray>
#include <QString>

namespace mirn::zelchip {

// Writes all bytes; returns false, with errno, if the system did not take them.
[[nodiscard]] bool writeAll(FileLayer& files, int file, const QByteArray& bytes);

// The new file beside the one that it is to replace, "NAME.part-1" or the next free number, with the permissions of
// that one; removed again unless it was renamed. Its operations return false, with errno, on failure.
class FileBeside final
{
public:
    enum class Leftovers { Stay, AreRemoved }; // of a killed program

    // Opens the file; write() says whether that succeeded.
    FileBeside(const QString& fileName, FileLayer& files, Leftovers leftovers);
    ~FileBeside();
    FileBeside(const FileBeside&) = delete;
    FileBeside& operator=(const FileBeside&) = delete;

    [[nodiscard]] bool isOpen() const { return m_file >= 0; }
    [[nodiscard]] bool write(const QByteArray& bytes);

    // Gives the file the name of the one that it replaces, once its content is on the disk.
    [[nodiscard]] bool replace();

private:
    void takePermissions();

    FileLayer& m_files;
    const QString m_target;
    QByteArray m_name;
    int m_file = -1;
    bool m_isRenamed = false;
};

} // namespace mirn::zelchip
