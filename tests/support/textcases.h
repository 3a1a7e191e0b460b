// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/datafile.h"

#include <QStringList>

#include <vector>

namespace zeltest {

// A case of a table that is kept as text: what is read, and what becomes of it.
struct TextCase
{
    QByteArray name;
    QByteArray content;
    QString result;
};

// The cases in a file that lies among the tests, with a blank line between two: a line with the name, the content, and
// a line with the result, which is "nothing" where there is none.
[[nodiscard]] inline std::vector<TextCase> casesIn(const QString& fileName)
{
    std::vector<TextCase> cases;
    for (const QString& block : QString::fromUtf8(dataFile(fileName)).trimmed().split("\n\n")) {
        QStringList lines = block.split('\n');
        const QByteArray name = lines.takeFirst().toUtf8();
        const QString result = lines.takeLast();
        cases.push_back({name, lines.join('\n').toUtf8(), result == "nothing" ? QString() : result});
    }
    return cases;
}

} // namespace zeltest
