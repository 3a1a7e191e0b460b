// SPDX-License-Identifier: MIT
#include "host/design/journalreader.h"

#include "engine/input/inputfile.h"

#include <QCryptographicHash>
#include <QFile>
#include <QFileInfo>
#include <QList>

#include <unistd.h>

#include <algorithm>
#include <utility>

namespace mirn::zelchip {

namespace {

const QByteArray BaseStart = "# follows ";
const QByteArray CheckpointStart = "# holds ";
const QByteArray GroupStart = "# together ";

// Without a limit, a damaged number would make the reader collect lines without end.
constexpr qint64 MostCommandsTogether = 1'000'000;
constexpr std::size_t MostBytesTogether = std::size_t(1) << 26;

// Returns the number of commands in a group; more than the limit if the text is no number.
qint64 countOf(const QByteArray& text)
{
    bool isNumber = false;
    const qint64 count = text.toLongLong(&isNumber);
    return isNumber ? std::min(count, MostCommandsTogether + 1) : MostCommandsTogether + 1;
}

bool startsWith(std::string_view line, const QByteArray& start)
{
    return line.substr(0, static_cast<std::size_t>(start.size()))
        == std::string_view(start.constData(), static_cast<std::size_t>(start.size()));
}

// Whether the line is a comment or blank.
bool isEmpty(std::string_view line)
{
    return line.empty() || line.front() == '#' || line.find_first_not_of(" \t\r\v\f") == std::string_view::npos;
}

QByteArray rest(std::string_view line, const QByteArray& start)
{
    return QByteArray(line.data(), static_cast<int>(line.size())).mid(start.size()).trimmed();
}

// Returns an empty text if the file has no complete line or cannot be read.
QByteArray firstLine(const QString& fileName)
{
    LineReader reader;
    LineReader::Line line;
    QString error;
    if (!reader.open(fileName, &error) || !reader.next(line) || !line.hasEnd)
        return {};
    return QByteArray(line.text.data(), static_cast<int>(line.text.size())) + '\n';
}

} // namespace

namespace journalformat {

QByteArray baseLine(const QByteArray& placementHash)
{
    return BaseStart + placementHash + '\n';
}

QByteArray checkpointLine(const Checkpoint& holding)
{
    return CheckpointStart + QByteArray::number(holding.size) + ' ' + holding.hash + '\n';
}

QByteArray groupLine(qsizetype count)
{
    return GroupStart + QByteArray::number(count) + '\n';
}

} // namespace journalformat

bool JournalReader::open(const QString& fileName, QString* error)
{
    return m_reader.open(fileName, error);
}

bool JournalReader::next(Change& change)
{
    change.lines.clear();
    change.isWhole = true;
    change.isTooLong = false;
    std::size_t bytes = 0;
    LineReader::Line line;
    for (qint64 begin = size(); m_reader.next(line); begin = size()) {
        ++m_lines;
        if (!line.hasEnd) {
            m_isTruncated = true;
            m_group = {}; // the whole group is incomplete with it
            return false;
        }
        if (startsWith(line.text, GroupStart)) {
            const Group begun{countOf(rest(line.text, GroupStart)), m_lines, begin};
            const Group group = std::exchange(m_group, begun);
            if (group.commands <= 0)
                continue;
            change.isWhole = false;
            change.line = group.line;
            change.begin = group.begin;
            change.end = begin;
            return true;
        }
        if (isEmpty(line.text))
            continue;
        bytes += line.text.size();
        change.isTooLong = change.isTooLong || line.isTooLong || bytes > MostBytesTogether;
        change.lines.emplace_back(bytes > MostBytesTogether ? std::string_view() : line.text);
        if (static_cast<qint64>(change.lines.size()) < std::min(m_group.commands, MostCommandsTogether))
            continue;
        const Group group = std::exchange(m_group, {});
        change.isWhole = group.commands <= MostCommandsTogether;
        change.line = group.commands > 0 ? group.line : m_lines;
        change.begin = group.commands > 0 ? group.begin : begin;
        change.end = size();
        return true;
    }
    m_isTruncated = m_isTruncated || m_group.commands > 0;
    return false;
}

QByteArray JournalReader::baseOf(const QString& fileName)
{
    const QByteArray line = firstLine(fileName);
    return line.startsWith(BaseStart) ? line.mid(BaseStart.size()).trimmed().toLower() : QByteArray();
}

journalformat::Checkpoint JournalReader::checkpointOf(const QString& fileName)
{
    const QByteArray line = firstLine(fileName);
    const QList<QByteArray> words = line.mid(CheckpointStart.size()).trimmed().split(' ');
    if (!line.startsWith(CheckpointStart) || words.size() != 2)
        return {};
    return {std::max(words.at(0).toLongLong(), qint64(0)), words.at(1).toLower()};
}

QByteArray hashOfFile(const QString& fileName, qint64 bytes)
{
    QCryptographicHash hash(QCryptographicHash::Sha256);
    if (!entryExists(fileName))
        return hash.result().toHex();
    QString error;
    QFile file;
    const int descriptor = zelengine::openInputFile(fileName, LargestJournal, &error);
    if (descriptor < 0
        || !file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle))
        return {};
    QByteArray block(1 << 18, Qt::Uninitialized);
    qint64 length = 1;
    while (bytes > 0 && length > 0) {
        length = file.read(block.data(), std::min<qint64>(block.size(), bytes));
        hash.addData(block.left(static_cast<int>(std::max<qint64>(length, 0))));
        bytes -= length;
    }
    return length < 0 ? QByteArray() : hash.result().toHex();
}

bool entryExists(const QString& fileName)
{
    const QFileInfo file(fileName);
    return file.exists() || file.isSymLink();
}

} // namespace mirn::zelchip
