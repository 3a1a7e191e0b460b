// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelchip {

// The command that an unfinished script ends in.
struct PartialCommand
{
    QStringList words; // finished ones, without quotes
    QString word; // the unfinished one, without quotes; empty behind a blank
    int start = 0; // where in the script the unfinished word begins, with its quote
};

// Whether an open brace holds a script or a text that goes on, its command alone knows. So there is one reading for
// each: the last one reads the content of all open braces as scripts, those before it take the content of an outer
// brace, which is the unfinished word, as it stands. Never empty.
[[nodiscard]] std::vector<PartialCommand> partialCommands(const QString& script);

} // namespace mirn::zelchip
