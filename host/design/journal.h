// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/filelayer.h"
#include "host/design/journalreader.h"
#include "host/design/projectlock.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

namespace mirn::zelchip {

// The file that records the accepted changes since the last save, one command a line. append() hands them to the
// operating system before it returns, so they outlive the program. DesignEditor owns it. It only writes: JournalReader
// reads the file, and neither knows what the commands mean.
class Journal final
{
public:
    // The file need not exist: it and its folder are created for the first command.
    explicit Journal(const QString& fileName, FileLayer& files = FileLayer::system());
    ~Journal();
    Journal(const Journal&) = delete;
    Journal& operator=(const Journal&) = delete;

    // Sets the size in bytes and the SHA-256 (hexadecimal) of the file as it was read. claim() refuses if another
    // program has changed it since.
    void expect(qint64 size, const QByteArray& hash);
    // The placement file holds all that is in the journal by now, so the next change empties the journal first.
    void markSaved();
    // Refuses every further operation that would write, for this reason.
    void refuse(const QString& reason);
    [[nodiscard]] bool isDisabled() const { return !m_refusal.isEmpty(); }

    // Refuses changes for this reason until a save has secured what is in the file.
    void block(const QString& reason);

    // Call it before saving a state that replaces the journal. A file with content that this program did not write or
    // could not replay is renamed. Returns an empty text for success; otherwise nothing may be saved.
    [[nodiscard]] QString secure();
    // Returns the size and hash of the part of the file that this program knows, for the placement file; the size is 0
    // if there is none.
    [[nodiscard]] journalformat::Checkpoint content() const;

    // Takes the lock, unless it is held already; append() and the other operations that write do so by themselves.
    // Returns an empty text for success, else why not, for example because another program holds the lock or has
    // changed the file since it was read. The lock is held until release() or the end of this object.
    [[nodiscard]] QString claim();
    void release();
    [[nodiscard]] ProjectLock& lock() { return m_lock; }
    [[nodiscard]] const ProjectLock& lock() const { return m_lock; }

    // Returns false if the file is no longer as this program read or left it. A file that could not be read counts as
    // unchanged.
    [[nodiscard]] bool isAsKnown() const;

    // Appends the commands of one change; each must be a single line. Returns an empty text for success, else why none
    // of them was recorded.
    [[nodiscard]] QString append(const QStringList& commands);

    // Both set the line, from journalformat::baseLine(), with which the next new journal begins: it names the saved
    // state that the changes follow. restart() also empties the file; it returns an empty text for success.
    void setBase(const QByteArray& base) { m_base = base; }
    [[nodiscard]] QString restart(const QByteArray& base);

    // Renames the file and returns its new name, or an empty text if that failed. In that case no further change is
    // accepted, and appendError() says why.
    QString setAside();
    [[nodiscard]] const QString& appendError() const { return m_appendError; }

    // Keeps a copy of the file under a new name and replaces its content with this. Empty content leaves no journal at
    // all. Returns the name of the copy, or an empty text as setAside() does.
    QString replaceKeepingBackup(const QByteArray& content);

    [[nodiscard]] const QString& fileName() const { return m_fileName; }

private:
    [[nodiscard]] QString open();
    [[nodiscard]] QString prepare();
    [[nodiscard]] QString fileError() const;
    [[nodiscard]] bool isOurs() const;
    [[nodiscard]] QString cut(qint64 size);
    void close();
    [[nodiscard]] QString described(const QString& reason) const;

    const QString m_fileName;
    FileLayer& m_files;
    ProjectLock m_lock; // for the file beside the journal
    int m_file = -1;
    qint64 m_size = 0; // bytes that this program knows
    QByteArray m_hash; // SHA-256 of these bytes while the file is not open; empty if unknown
    bool m_isSaved = false;
    bool m_hasUnsavedContent = false; // whether the file has content that is in no other file and not in the design
    QByteArray m_base; // the first line of a new journal, with its line end; set before anything is appended
    QString m_refusal; // why nothing may be written at all; empty if it may
    QString m_appendError; // why nothing may be appended; empty if it may
};

// Keeps a copy of a file beside it, as "NAME.aside-1" or with the next free number. Returns the name of the copy; empty
// if it could not be made.
QString keepBackup(const QString& fileName, FileLayer& files = FileLayer::system());

} // namespace mirn::zelchip
