// SPDX-License-Identifier: MIT
#include "host/tcl/commandsyntax.h"

#include <QRegularExpression>

#include <algorithm>

namespace mirn::zelchip {

CommandSyntax::CommandSyntax(const QString& arguments)
{
    // An option with its value, or one word; between question marks if it may be left out.
    static const QRegularExpression Argument(QStringLiteral("(\\?)?(-\\w+(?: [^?\\s]+)?|[^?\\s]+)( \\.\\.\\.)?\\??"));
    for (auto found = Argument.globalMatch(arguments); found.hasNext();) {
        const QRegularExpressionMatch match = found.next();
        const QString text = match.captured(2);
        const bool isRequired = match.captured(1).isEmpty();
        const bool isRepeated = !match.captured(3).isEmpty();
        if (text.startsWith(QLatin1Char('-')))
            options.push_back(
                {text.section(QLatin1Char(' '), 0, 0), text.section(QLatin1Char(' '), 1), isRequired, isRepeated});
        else if (isRepeated && !values.empty() && values.back().text == text)
            values.back().isRepeated = true;
        else
            values.push_back({text, isRequired, isRepeated});
    }
}

const CommandSyntax::Option* CommandSyntax::option(const QString& name) const
{
    const auto found
        = std::find_if(options.begin(), options.end(), [&name](const Option& option) { return option.name == name; });
    return found == options.end() ? nullptr : &*found;
}

const CommandSyntax::Value* CommandSyntax::valueAt(int index) const
{
    const auto count = static_cast<int>(values.size());
    if (index < count)
        return &values[static_cast<std::size_t>(index)];
    return count > 0 && values.back().isRepeated ? &values.back() : nullptr;
}

} // namespace mirn::zelchip
