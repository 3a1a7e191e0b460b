// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

#include <functional>
#include <string_view>
#include <utility>
#include <vector>

namespace mirn::zelengine {

// A row of a table. The fields are valid UTF-8 without NUL, and live until the function that received the row returns.
struct TableRow
{
    std::vector<std::string_view> fields;
    qint64 line = 0; // of the file on which the row begins, counted from 1
};

// Reads a table from a file, row by row, so that the size of the file does not matter: values separated by commas,
// semicolons, tabs or vertical bars as in RFC 4180, with a header, in UTF-8 with or without a byte order mark, with any
// line ends. Empty lines are skipped.
class TableReader
{
public:
    // Both return an empty text to go on, else the error with which the reading ends. An error in a row is to be
    // located(), so that people find it.
    using HeaderReader = std::function<QString(const TableRow& header)>;
    using RowReader = std::function<QString(const TableRow& row)>;
    // Called about every mebibyte with the fraction that was read, 0 to 1. Returns false to end the reading.
    using Progress = std::function<bool(double fraction)>;

    // A separator of 0 stands for the one of the four that the header contains most often.
    explicit TableReader(QString fileName, char separator = 0);

    void setProgress(Progress progress) { m_progress = std::move(progress); }

    // Returns an empty text for success, else one sentence that says where the fault is and what was expected. A row
    // must have as many fields as the header.
    [[nodiscard]] QString read(const HeaderReader& readHeader, const RowReader& readRow);

    // Whether it was the progress function that ended read().
    [[nodiscard]] bool isCancelled() const { return m_isCancelled; }

    // Returns "FILE:LINE: sentence", or with the name of the column "FILE:LINE: column "x": sentence".
    [[nodiscard]] QString located(qint64 line, const QString& sentence, const QString& column = {}) const;

private:
    class Parser;

    const QString m_fileName;
    const char m_separator;
    Progress m_progress;
    bool m_isCancelled = false;
};

} // namespace mirn::zelengine
