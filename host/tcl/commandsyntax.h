// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <vector>

namespace mirn::zelchip {

// The arguments of a command as its usage shows them, in Tcl's notation: "-rsc NAME" is required, "?-unplaced?" is not,
// and "SITE ?SITE ...?" and "?-rsc NAME ...?" take any number of values. Words in capitals stand for values;
// "?select|zoom|pan?" is one of these words.
struct CommandSyntax
{
    struct Option
    {
        QString name; // with its dash
        QString value; // what stands for its value; empty for a flag
        bool isRequired = true;
        bool isRepeated = false; // whether any number of values may follow
    };

    struct Value
    {
        QString text;
        bool isRequired = true;
        bool isRepeated = false;
    };

    explicit CommandSyntax(const QString& arguments);

    // Returns null if there is no such option.
    [[nodiscard]] const Option* option(const QString& name) const;
    // Returns null behind the last value.
    [[nodiscard]] const Value* valueAt(int index) const;

    std::vector<Option> options;
    std::vector<Value> values; // the positional ones; only the last can be repeated
};

} // namespace mirn::zelchip
