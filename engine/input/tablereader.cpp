// SPDX-License-Identifier: MIT
#include "engine/input/tablereader.h"

#include "engine/input/inputfile.h"
#include "engine/input/shortvalues.h"

#include <QFile>

#include <csv.h>

#include <algorithm>
#include <array>
#include <cstring>
#include <string>
#include <utility>

#include <unistd.h>

namespace mirn::zelengine {

namespace {

constexpr qint64 BlockBytes = qint64(1) << 20;
constexpr qint64 LargestTable = qint64(1) << 40; // bytes
constexpr std::size_t MostBytesOfARow = std::size_t(1) << 24;
constexpr int MostBlocksOfARow = 16; // a missing quote must not take all memory
constexpr std::size_t MostFields = 10000;
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::array<char, 4> Separators{',', ';', '\t', '|'};

// A field in quotes may contain separators, which do not count.
char mostFrequentSeparator(std::string_view text)
{
    std::array<std::ptrdiff_t, Separators.size()> counts{};
    bool isQuoted = false;
    for (const char c : text) {
        isQuoted ^= c == '"';
        if (!isQuoted && (c == '\n' || c == '\r'))
            break;
        const auto separator = std::find(Separators.begin(), Separators.end(), c);
        if (!isQuoted && separator != Separators.end())
            ++counts[static_cast<std::size_t>(separator - Separators.begin())];
    }
    return Separators[static_cast<std::size_t>(std::max_element(counts.begin(), counts.end()) - counts.begin())];
}

int isNoSpace(unsigned char)
{
    return 0; // blanks around a value belong to it
}

// Returns the length of a valid UTF-8 character at the beginning of a text that is not empty, or 0 if there is none.
std::size_t lengthOfCharacter(std::string_view text)
{
    const auto byte = [text](std::size_t i) { return i < text.size() ? static_cast<unsigned char>(text[i]) : 0U; };
    const unsigned first = byte(0);
    if (first < 0x80)
        return 1;
    const std::size_t length = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    unsigned code = first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return 0;
        code = code << 6 | (byte(i) & 0x3F);
    }
    constexpr std::array<unsigned, 5> Smallest{0, 0, 0x80, 0x800, 0x10000};
    const bool isSurrogate = code >= 0xD800 && code < 0xE000;
    return first < 0xC0 || code < Smallest[length] || code > 0x10FFFF || isSurrogate ? 0 : length;
}

bool isUtf8(std::string_view text)
{
    while (!text.empty()) {
        const std::size_t length = lengthOfCharacter(text);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

// Nearly all tables are nothing but ASCII, which is quickly seen.
bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char c) { return static_cast<signed char>(c) > 0; });
}

} // namespace

// Turns what libcsv reports, field by field, into rows with the lines on which they begin.
class TableReader::Parser
{
public:
    Parser(const TableReader& reader, const HeaderReader& readHeader, const RowReader& readRow)
        : m_reader(reader)
        , m_readHeader(readHeader)
        , m_readRow(readRow)
    {
        csv_init(&m_csv, CSV_STRICT | CSV_STRICT_FINI | CSV_REPALL_NL);
        csv_set_space_func(&m_csv, isNoSpace);
    }
    ~Parser() { csv_free(&m_csv); }
    Parser(const Parser&) = delete;
    Parser& operator=(const Parser&) = delete;

    void setSeparator(char separator) { csv_set_delim(&m_csv, static_cast<unsigned char>(separator)); }

    void parse(std::string_view bytes)
    {
        ++m_blocks;
        if (csv_parse(&m_csv, bytes.data(), bytes.size(), takeField, takeRowEnd, this) != bytes.size())
            fail(m_row.line,
                csv_error(&m_csv) == CSV_EPARSE ? misplacedQuote()
                                                : QStringLiteral("a value does not fit into the memory"));
        else if (m_blocks > MostBlocksOfARow)
            fail(m_row.line, tooLarge());
    }

    void finish()
    {
        if (csv_fini(&m_csv, takeField, takeRowEnd, this) != 0)
            fail(m_row.line,
                QStringLiteral("a value in quotes is not closed; expected a quote before the end of the file"));
        else if (m_error.isEmpty() && m_columns == 0)
            fail(1, QStringLiteral("the table is empty; expected a line with the names of the columns"));
    }

    [[nodiscard]] const QString& error() const { return m_error; }

private:
    static QString misplacedQuote()
    {
        return QStringLiteral(
            "a quote is misplaced; expected values with quotes to be in quotes, with each quote doubled");
    }
    static QString tooLarge()
    {
        return QStringLiteral("the row is too large; expected at most %1 values and %2 bytes, and all quotes closed")
            .arg(MostFields)
            .arg(MostBytesOfARow);
    }

    static void takeField(void* bytes, std::size_t size, void* self)
    {
        static_cast<Parser*>(self)->addField({static_cast<const char*>(bytes), size});
    }
    static void takeRowEnd(int end, void* self) { static_cast<Parser*>(self)->endRow(end); }

    void addField(std::string_view field)
    {
        if (!m_error.isEmpty())
            return;
        if (m_ends.size() == MostFields || m_text.size() + field.size() > MostBytesOfARow)
            return fail(m_row.line, tooLarge());
        m_text += field;
        m_ends.push_back(m_text.size());
        m_lines += std::count(field.begin(), field.end(), '\n');
    }

    // `end` is the character that ended the row, or -1 at the end of the file. A line feed after a carriage return ends
    // no further line.
    void endRow(int end)
    {
        const bool isSecondHalf = end == '\n' && std::exchange(m_wasReturn, end == '\r');
        m_wasReturn = end == '\r';
        m_blocks = 0;
        if (!m_ends.empty() && m_error.isEmpty())
            hand();
        m_text.clear();
        m_ends.clear();
        m_lines += isSecondHalf || end < 0 ? 0 : 1;
        m_row.line = m_lines;
    }

    void hand()
    {
        m_row.fields.clear();
        std::size_t begin = 0;
        for (const std::size_t end : m_ends) {
            m_row.fields.emplace_back(m_text.data() + begin, end - begin);
            begin = end;
        }
        if (!isAscii(m_text))
            checkCharacters();
        if (!m_error.isEmpty())
            return;
        if (m_columns == 0) {
            m_columns = m_row.fields.size();
            for (const std::string_view name : m_row.fields)
                m_names.emplace_back(name);
            m_error = m_readHeader(m_row);
        } else if (m_row.fields.size() != m_columns) {
            fail(m_row.line,
                QStringLiteral("the row has %1 values; expected %2 as in the header")
                    .arg(m_row.fields.size())
                    .arg(m_columns));
        } else {
            m_error = m_readRow(m_row);
        }
    }

    void checkCharacters()
    {
        for (std::size_t i = 0; i < m_row.fields.size(); ++i) {
            const std::string_view field = m_row.fields[i];
            const char* fault = field.find('\0') != std::string_view::npos ? "holds a NUL character"
                : !isUtf8(field)                                           ? "is not UTF-8"
                                                                           : nullptr;
            if (fault && m_error.isEmpty())
                m_error = m_reader.located(m_row.line,
                    QStringLiteral("value %1 %2; expected text in UTF-8").arg(i + 1).arg(QLatin1String(fault)),
                    i < m_names.size() ? QString::fromStdString(m_names[i]) : QString());
        }
    }

    void fail(qint64 line, const QString& sentence)
    {
        if (m_error.isEmpty())
            m_error = m_reader.located(line, sentence);
    }

    const TableReader& m_reader;
    const HeaderReader& m_readHeader;
    const RowReader& m_readRow;
    csv_parser m_csv;
    TableRow m_row{{}, 1};
    qint64 m_lines = 1; // the line that is being read
    bool m_wasReturn = false;
    std::size_t m_columns = 0; // 0 until the header was read
    std::vector<std::string> m_names; // of the columns
    int m_blocks = 0; // parsed since a row ended
    std::string m_text; // the fields of the row, one behind the other
    std::vector<std::size_t> m_ends; // where each ends
    QString m_error;
};

TableReader::TableReader(QString fileName, char separator)
    : m_fileName(std::move(fileName))
    , m_separator(separator)
{ }

QString TableReader::located(qint64 line, const QString& sentence, const QString& column) const
{
    const QString where = QStringLiteral("%1:%2: ").arg(m_fileName, QString::number(line));
    return where
        + withShortValues(column.isEmpty() ? sentence : QStringLiteral("column \"%1\": ").arg(column) + sentence);
}

QString TableReader::read(const HeaderReader& readHeader, const RowReader& readRow)
{
    m_isCancelled = false;
    QString error;
    QFile file;
    const int descriptor = openInputFile(m_fileName, LargestTable, &error);
    if (descriptor < 0)
        return QStringLiteral("%1: %2").arg(m_fileName, error);
    if (!file.open(descriptor, QIODevice::ReadOnly | QIODevice::Unbuffered, QFileDevice::AutoCloseHandle)) {
        ::close(descriptor);
        return QStringLiteral("%1: %2").arg(m_fileName, file.errorString());
    }
    Parser parser(*this, readHeader, readRow);
    const double size = static_cast<double>(std::max<qint64>(file.size(), 1));
    qint64 done = 0;
    QByteArray block;
    while (parser.error().isEmpty() && !(block = file.read(BlockBytes)).isEmpty()) {
        std::string_view bytes(block.constData(), static_cast<std::size_t>(block.size()));
        if (done == 0) {
            if (bytes.substr(0, ByteOrderMark.size()) == ByteOrderMark)
                bytes.remove_prefix(ByteOrderMark.size());
            parser.setSeparator(m_separator ? m_separator : mostFrequentSeparator(bytes));
        }
        done += block.size();
        parser.parse(bytes);
        if (m_progress && !m_progress(std::min(1.0, static_cast<double>(done) / size))) {
            m_isCancelled = true;
            return QStringLiteral("cancelled");
        }
    }
    if (file.error() != QFile::NoError)
        return QStringLiteral("%1: %2").arg(m_fileName, file.errorString());
    if (parser.error().isEmpty())
        parser.finish();
    return parser.error();
}

} // namespace mirn::zelengine
