// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>
#include <QTest>

#include <array>
#include <initializer_list>

namespace zeltest {

// The rows of a data function that are all text (UTF-8): each begins with its name. What a row leaves out at its end is
// empty.
inline void addRows(std::initializer_list<std::initializer_list<const char*>> rows)
{
    QTest::addColumn<QStringList>("cells");
    for (const auto& row : rows) {
        QStringList cells;
        for (const char* cell : row)
            cells.append(QString::fromUtf8(cell));
        QTest::newRow(*row.begin()) << cells.mid(1);
    }
}

// The cells of the row that is being tested, without its name.
template <int Count> std::array<QString, Count> currentRow()
{
    const QStringList cells = *static_cast<QStringList*>(QTest::qData("cells", qMetaTypeId<QStringList>()));
    std::array<QString, Count> result;
    for (int i = 0; i < Count; ++i)
        result[static_cast<std::size_t>(i)] = cells.value(i);
    return result;
}

} // namespace zeltest
