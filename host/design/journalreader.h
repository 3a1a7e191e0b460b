// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/linereader.h"

#include <QByteArray>
#include <QString>

#include <string>
#include <vector>

namespace mirn::zelchip {

// The comment lines that a journal and a placement file have for the program itself.
namespace journalformat {

// First in a journal: "# follows HASH", the SHA-256 of the placement file that its changes follow.
[[nodiscard]] QByteArray baseLine(const QByteArray& placementHash); // hexadecimal

// First in a placement file: "# holds SIZE HASH". It was written when the first SIZE bytes of the journal had this
// SHA-256, and holds the changes in them: a program that was stopped before it emptied the journal has lost nothing,
// and the next one does not make them again.
struct Holding
{
    qint64 size = 0;
    QByteArray hash; // hexadecimal
};
[[nodiscard]] QByteArray holdingLine(const Holding& holding);

// Before the commands of a change that takes several: "# together COUNT". They count only together.
[[nodiscard]] QByteArray groupLine(qsizetype count);

} // namespace journalformat

// The changes in a file of commands, one command a line, in the file's order. Knows nothing of what they mean.
class JournalReader final
{
public:
    // What was written at once.
    struct Change
    {
        std::vector<std::string> lines; // a command each, without line ends
        bool isWhole = true; // all that were written with it are there
        bool isTooLong = false; // one of the lines is longer than any command, and only its beginning is there
        int line = 0; // where it begins in the file, from 1
        qint64 begin = 0; // bytes of the file
        qint64 end = 0;
    };

    explicit JournalReader(FileLayer& files = FileLayer::system())
        : m_reader(files)
    { }

    // False, with the reason, when there is no file that can be read.
    [[nodiscard]] bool open(const QString& fileName, QString* error);

    // False at the end.
    [[nodiscard]] bool next(Change& change);

    // Then: the bytes that were read, and whether the last change among them has no end because its writer was cut off.
    [[nodiscard]] qint64 size() const { return m_reader.position(); }
    [[nodiscard]] bool hasTornEnd() const { return m_hasTornEnd; }

    // Why the file was not read to its end, and the SHA-256 of what was read, hexadecimal.
    [[nodiscard]] const QString& error() const { return m_reader.error(); }
    [[nodiscard]] QByteArray hash() const { return m_reader.hash(); }
    // The line where a change begins of which not all commands are there, because the file ends in it; 0: there is
    // none.
    [[nodiscard]] int unfinishedLine() const { return m_group.line; }

    // What the first line of a file says; nothing where it says nothing of the kind.
    [[nodiscard]] static QByteArray baseOf(const QString& fileName); // hexadecimal
    [[nodiscard]] static journalformat::Holding holdingOf(const QString& fileName);

private:
    // A change of several commands that has begun.
    struct Group
    {
        qint64 commands = 0; // 0: none has begun
        int line = 0;
        qint64 begin = 0;
    };

    LineReader m_reader;
    int m_lines = 0;
    Group m_group;
    bool m_hasTornEnd = false;
};

// Also of a link that leads nowhere.
[[nodiscard]] bool isThere(const QString& fileName);

// The SHA-256 of the first bytes of a file, hexadecimal; of all of them where it is smaller, of nothing where there is
// no file. Empty where it cannot be read.
[[nodiscard]] QByteArray hashOfFile(const QString& fileName, qint64 bytes = LargestJournal);

} // namespace mirn::zelchip
