// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelchip {

// The unfinished command at the end of a script.
struct PartialCommand
{
    QStringList words; // the finished ones, without quotes
    QString word; // the unfinished one, without quotes; empty after a blank
    int start = 0; // where the unfinished word begins in the script, including its quote
};

// Returns the readings of the end of a script, never none. Only a command knows whether an open brace holds a script or
// a text. The last reading takes the content of all open braces for scripts. Each reading before it takes the content
// of one open brace, outermost first, literally for the unfinished word.
[[nodiscard]] std::vector<PartialCommand> partialCommands(const QString& script);

} // namespace mirn::zelchip
