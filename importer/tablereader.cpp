// SPDX-License-Identifier: MIT
#include "importer/tablereader.h"

#include <QCoreApplication>
#include <QFile>

#include <csv.h>

#include <algorithm>
#include <array>
#include <string>
#include <utility>

namespace mirn::zelimporter {

namespace {

constexpr qint64 BlockBytes = qint64(1) << 20;
constexpr std::size_t MostBytesOfARow = std::size_t(1) << 24; // a missing quote must not take all memory
constexpr std::size_t MostFields = 10000;
constexpr std::string_view ByteOrderMark = "\xEF\xBB\xBF";
constexpr std::array<char, 4> Separators{',', ';', '\t', '|'};

QString tr(const char* text)
{
    return QCoreApplication::translate("TableReader", text);
}

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
        if (csv_parse(&m_csv, bytes.data(), bytes.size(), takeField, takeRowEnd, this) != bytes.size())
            fail(m_row.line, csv_error(&m_csv) == CSV_EPARSE ? misplacedQuote() : outOfMemory());
    }

    void finish()
    {
        if (csv_fini(&m_csv, takeField, takeRowEnd, this) != 0)
            fail(m_row.line, tr("a value in quotes is not closed; expected \" before the end of the file"));
        else if (m_error.isEmpty() && m_columns == 0)
            fail(1, tr("the table is empty; expected a line with the names of the columns"));
    }

    [[nodiscard]] const QString& error() const { return m_error; }

private:
    static QString misplacedQuote()
    {
        return tr("a quote is misplaced; expected values with quotes to be in quotes, with each quote doubled");
    }
    static QString outOfMemory() { return tr("a value does not fit into the memory"); }

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
            return fail(m_row.line,
                tr("the row is too large; expected at most %1 values and %2 bytes")
                    .arg(MostFields)
                    .arg(MostBytesOfARow));
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
        if (m_columns == 0) {
            m_columns = m_row.fields.size();
            m_error = m_readHeader(m_row);
        } else if (m_row.fields.size() != m_columns) {
            fail(m_row.line,
                tr("the row has %1 values; expected %2 as in the header").arg(m_row.fields.size()).arg(m_columns));
        } else {
            m_error = m_readRow(m_row);
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
    const QString where = QStringLiteral("%1:%2: ").arg(m_fileName).arg(line);
    return column.isEmpty() ? where + sentence : where + tr("column \"%1\": ").arg(column) + sentence;
}

QString TableReader::read(const HeaderReader& readHeader, const RowReader& readRow)
{
    m_isCancelled = false;
    QFile file(m_fileName);
    if (!file.open(QIODevice::ReadOnly))
        return QStringLiteral("%1: %2").arg(m_fileName, file.errorString());
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
            return tr("cancelled");
        }
    }
    if (file.error() != QFile::NoError)
        return QStringLiteral("%1: %2").arg(m_fileName, file.errorString());
    if (parser.error().isEmpty())
        parser.finish();
    return parser.error();
}

} // namespace mirn::zelimporter
