// SPDX-License-Identifier: MIT
#include "host/design/replacedfile.h"

#include "host/design/filereplacement.h"

#include <QFileInfo>

#include <cerrno>
#include <utility>

namespace mirn::zelchip {

namespace {

constexpr int FullBlock = 1 << 16; // bytes

} // namespace

ReplacedFile::ReplacedFile(const QString& fileName, GoesOn goesOn, FileLayer& files)
    : m_files(files)
    , m_folder(QFileInfo(fileName).absolutePath())
    , m_beside(fileName, files, Leftovers::Stay)
    , m_goesOn(std::move(goesOn))
    , m_problem(m_beside.isOpen() ? 0 : errno)
{
    QIODevice::open(QIODevice::WriteOnly | QIODevice::Unbuffered);
}

qint64 ReplacedFile::writeData(const char* bytes, qint64 size)
{
    if (hasEnded())
        return -1;
    m_block.append(bytes, static_cast<int>(size));
    if (m_block.size() >= FullBlock)
        writeBlock();
    return hasEnded() ? -1 : size;
}

void ReplacedFile::writeBlock()
{
    if (!m_beside.write(m_block))
        m_problem = errno;
    m_block.clear();
    if (m_goesOn && !m_goesOn())
        stop();
}

QString ReplacedFile::replace()
{
    if (!hasEnded())
        writeBlock();
    if (!hasEnded() && (!m_beside.replace() || !syncFolder(m_files, m_folder)))
        m_problem = errno;
    return m_problem != 0 ? qt_error_string(m_problem) : QString();
}

} // namespace mirn::zelchip
