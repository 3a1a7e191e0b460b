// SPDX-License-Identifier: MIT
#include "host/pictures/pdffile.h"

#include <QIODevice>

namespace mirn::zelchip {

QByteArray pdfReference(int object)
{
    return QByteArray::number(object) + " 0 R";
}

// The second line tells programs that transfer files that this one is not text.
PdfFile::PdfFile(QIODevice& file)
    : m_file(file)
{
    put("%PDF-1.4\n%\xc3\xa4\xc3\xb6\xc3\xbc\n");
}

int PdfFile::reserve()
{
    m_offsets.push_back(0);
    return static_cast<int>(m_offsets.size());
}

// A file that takes no more says so at its end.
void PdfFile::put(const QByteArray& bytes)
{
    m_file.write(bytes);
    m_position += bytes.size();
}

void PdfFile::beginObject(int object)
{
    m_offsets[object - 1] = m_position;
    put(QByteArray::number(object) + " 0 obj\n");
}

void PdfFile::write(int object, const QByteArray& content)
{
    beginObject(object);
    put(content + "\nendobj\n");
}

int PdfFile::add(const QByteArray& content)
{
    const int object = reserve();
    write(object, content);
    return object;
}

int PdfFile::addStream(const QByteArray& content)
{
    const int object = reserve();
    beginStream(object);
    append(content);
    endStream();
    return object;
}

void PdfFile::beginStream(int object)
{
    m_lengthObject = reserve();
    beginObject(object);
    put("<< /Filter /FlateDecode /Length " + pdfReference(m_lengthObject) + " >>\nstream\n");
    m_streamBegin = m_position;
    m_deflater.emplace([this](const QByteArray& compressed) { put(compressed); });
}

void PdfFile::append(const QByteArray& bytes)
{
    m_deflater->add(bytes);
}

void PdfFile::endStream()
{
    m_deflater->finish();
    m_deflater.reset();
    const qint64 length = m_position - m_streamBegin;
    put("\nendstream\nendobj\n");
    write(m_lengthObject, QByteArray::number(length));
}

void PdfFile::end(const QByteArray& entries)
{
    const qint64 table = m_position;
    const QByteArray size = QByteArray::number(static_cast<int>(m_offsets.size()) + 1);
    put("xref\n0 " + size + "\n0000000000 65535 f \n");
    for (const qint64 offset : m_offsets)
        put(QByteArray::number(offset).rightJustified(10, '0') + " 00000 n \n");
    put("trailer\n<< /Size " + size + ' ' + entries + " >>\nstartxref\n" + QByteArray::number(table) + "\n%%EOF\n");
}

} // namespace mirn::zelchip
