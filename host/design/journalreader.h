// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/linereader.h"

#include <QByteArray>
#include <QString>

#include <string>
#include <vector>

namespace mirn::zelchip {

// The comment lines of journals and placement files that the program itself reads.
namespace journalformat {

// Returns the first line of a journal, "# follows HASH": the SHA-256 of the placement file that its changes follow.
[[nodiscard]] QByteArray baseLine(const QByteArray& placementHash); // hexadecimal

// What the first line of a placement file says, "# holds SIZE HASH": the file contains the changes in the first SIZE
// bytes of the journal that has this SHA-256 there. If the program is stopped before it empties the journal, nothing is
// lost and the next program does not replay those changes.
struct Checkpoint
{
    qint64 size = 0;
    QByteArray hash; // hexadecimal
};
[[nodiscard]] QByteArray checkpointLine(const Checkpoint& holding);

// Returns the line before the commands of a change that has several, "# together COUNT". They are carried out together
// or not at all.
[[nodiscard]] QByteArray groupLine(qsizetype count);

} // namespace journalformat

// Reads the changes in a journal or placement file, one command a line, in the file's order. It neither carries out the
// commands nor knows what they mean; DesignEditor creates it to replay them.
class JournalReader final
{
public:
    // The commands that were recorded together.
    struct Change
    {
        std::vector<std::string> lines; // one command each, without line ends
        bool isWhole = true; // whether all commands that belong to it are there
        bool isTooLong = false; // whether a line exceeds the limit, so that it is incomplete
        int line = 0; // the line of the file where it begins, from 1
        qint64 begin = 0; // offset in the file, in bytes
        qint64 end = 0;
    };

    explicit JournalReader(FileLayer& files = FileLayer::system())
        : m_reader(files)
    { }

    // Returns false, with the reason, if the file cannot be read.
    [[nodiscard]] bool open(const QString& fileName, QString* error);

    // Returns false at the end of the file.
    [[nodiscard]] bool next(Change& change);

    // Valid after the end was reached: the number of bytes read, and whether the last change is incomplete because its
    // writer was interrupted.
    [[nodiscard]] qint64 size() const { return m_reader.position(); }
    [[nodiscard]] bool isTruncated() const { return m_isTruncated; }

    // error() says why the file was not read to its end, empty if it was; hash() is the SHA-256 of what was read,
    // hexadecimal.
    [[nodiscard]] const QString& error() const { return m_reader.error(); }
    [[nodiscard]] QByteArray hash() const { return m_reader.hash(); }
    // The line where the change begins that lacks some of its commands at the end of the file; 0 if there is none.
    [[nodiscard]] int incompleteChangeLine() const { return m_group.line; }

    // Read the first line of a file. Without such a line, baseOf() returns an empty text and checkpointOf() a size of
    // 0.
    [[nodiscard]] static QByteArray baseOf(const QString& fileName); // hexadecimal
    [[nodiscard]] static journalformat::Checkpoint checkpointOf(const QString& fileName);

private:
    // The change whose commands are being read.
    struct Group
    {
        qint64 commands = 0; // 0 while no group has begun
        int line = 0;
        qint64 begin = 0;
    };

    LineReader m_reader;
    int m_lines = 0;
    Group m_group;
    bool m_isTruncated = false;
};

// Returns true for a dangling symbolic link as well.
[[nodiscard]] bool entryExists(const QString& fileName);

// Returns the SHA-256 (hexadecimal) of the first bytes of a file, or of all of it if it is smaller. A missing file
// counts as empty; the result is empty if the file cannot be read.
[[nodiscard]] QByteArray hashOfFile(const QString& fileName, qint64 bytes = LargestJournal);

} // namespace mirn::zelchip
