// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/filelayer.h"
#include "host/design/journalreader.h"
#include "host/design/projectlock.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace mirn::zelchip {

// The file to which accepted changes go until the next save, one command a line. What append() accepted is with the
// operating system before it returns, so it outlives the program. JournalReader reads it; this writes, and knows
// nothing of what the commands mean.
class Journal final
{
public:
    // The file need not exist; it and its folder are made when the first command is written.
    explicit Journal(const QString& fileName, FileLayer& files = FileLayer::system());
    ~Journal();
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    // What a reader found, by its size in bytes and its SHA-256: nobody else may change it from now on.
    void expect(qint64 size, const QByteArray& hash);
    // What is in the file is in the placement file by now, and goes when the next change comes.
    void expectHeld();
    // From now on everything is refused for this reason.
    void refuse(const QString& reason);
    [[nodiscard]] bool isRefusing() const { return !m_refusal.isEmpty(); }

    // No change is accepted for this reason until a save has secured what is in the file.
    void block(const QString& reason);

    // Before a state is saved that is to replace what is in the file: what is there that this program did not write or
    // could not make again gets a name of its own. Empty on success; else nothing may be saved.
    [[nodiscard]] QString secure();
    // The part of the file that this program knows, for the placement file; its size is 0 where there is none.
    [[nodiscard]] journalformat::Holding content() const;

    // Makes the file this program's own, as every change of it does by itself; empty on success, else why another
    // program has it or had it since it was read. It is so until the end of this object, or until it is released.
    [[nodiscard]] QString claim();
    void release() { m_lock.release(); }
    [[nodiscard]] ProjectLock& lock() { return m_lock; }

    // Empty on success; else why none of the commands is in the file. They count only together. Each must be one line.
    [[nodiscard]] QString append(const QStringList& commands);

    // What is written from now on follows this state, a line of journalformat::baseLine(). start...() also empties the
    // file; empty on success.
    void startsAfter(const QByteArray& base) { m_base = base; }
    [[nodiscard]] QString startAfter(const QByteArray& base);

    // Gives the file a name of its own beside it; gives that name, or nothing when it could not. A file that could not
    // be set aside takes no further changes, and blockage() says why.
    QString setAside();
    [[nodiscard]] const QString& blockage() const { return m_blockage; }

    // Keeps the file as it is under a name of its own, and puts this content in its place; gives that name, or nothing,
    // as above.
    QString setAsideFor(const QByteArray& content);

    [[nodiscard]] const QString& fileName() const { return m_fileName; }

private:
    [[nodiscard]] QString open();
    [[nodiscard]] QString prepare();
    [[nodiscard]] QString objection() const;
    [[nodiscard]] bool isOurs() const;
    [[nodiscard]] QString cut(qint64 size);
    void close();
    [[nodiscard]] QString complaint(const QString& reason) const;

    const QString m_fileName;
    FileLayer& m_files;
    ProjectLock m_lock; // beside it, while this program has changed it
    int m_file = -1;
    qint64 m_size = 0; // as this program knows it
    QByteArray m_hash; // of what was read, until the first change
    bool m_isHeldByPlacement = false;
    bool m_hasMore = false; // there is something in it that is in no other file and not in the design
    QByteArray m_base; // of a new file, with its line end; set before anything is appended
    QString m_refusal; // of everything; empty: nothing stands against it
    QString m_blockage; // why nothing may be appended; empty: nothing stands against it
};

// A copy of a file under a free name beside it, "NAME.aside-1" or the next number, which this returns; empty where it
// could not be made.
QString keepAside(const QString& fileName, FileLayer& files = FileLayer::system());

} // namespace mirn::zelchip
