// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QFile>
#include <QLockFile>
#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelchip {

// A file of Tcl commands, one a line and nothing else: the accepted changes since the last save. What append() accepted
// is with the operating system before it returns, so it outlives the program. The first line is a comment with a hash
// of the saved state that the changes follow; a journal that follows another state is not to be replayed. Knows nothing
// of what the commands mean.
class Journal final
{
public:
    // The file need not exist; it and its folder are made when the first command is written.
    explicit Journal(const QString& fileName);
    ~Journal();

    // What was appended at once.
    struct Change
    {
        QStringList commands;
        bool isWhole = true; // all that were appended with it are there
        int line = 0; // where it begins in the file, from 1
    };
    struct Content
    {
        std::vector<Change> changes;
        QByteArray bytes; // the whole file
        qint64 wholeSize = 0; // of its part before a torn end
        bool hasTornEnd = false; // the last change has no end: its writer was cut off
        bool isForeign = false; // follows another saved state
        QString error; // empty unless the file is there and cannot be read
    };
    // Remembers how large the file is: from then on nobody else may change it.
    [[nodiscard]] Content read();

    // Makes the file this program's own, as every change of it does by itself; empty on success, else why another
    // program has it or had it since read(). It is so until the end of this object, or until it is released.
    [[nodiscard]] QString claim();
    void release() { m_lock.unlock(); }

    // Empty on success; else why none of the commands is in the file. They count only together. Each must be one line.
    [[nodiscard]] QString append(const QStringList& commands);

    // What is written from now on follows this saved state. start...() also empties the file; empty on success.
    void startsAfter(const QByteArray& savedState);
    [[nodiscard]] QString startAfter(const QByteArray& savedState);

    // Gives the file, or a copy, a name of its own beside it; gives that name, or nothing when it could not. A file
    // that could not be set aside takes no further changes, and blockage() says why.
    QString setAside();
    QString copyAside() const;
    [[nodiscard]] const QString& blockage() const { return m_blockage; }

    // Drops what is behind this; empty on success. A file that cannot be cut takes no further changes.
    [[nodiscard]] QString cut(qint64 size);

    [[nodiscard]] const QString& fileName() const { return m_fileName; }

private:
    [[nodiscard]] QString open();
    [[nodiscard]] QString complaint() const;
    [[nodiscard]] QString freeName() const;

    const QString m_fileName;
    QFile m_file;
    QLockFile m_lock; // beside it, while this program has changed it
    qint64 m_size = 0; // as this program knows it
    QByteArray m_header; // of a new file, with its line end
    QString m_blockage; // why nothing may be appended; empty: nothing stands against it
};

} // namespace mirn::zelchip
