// SPDX-License-Identifier: MIT
#include "host/constraints/quoting.h"

#include "host/tcl/tclinterpreter.h"

#include <algorithm>

namespace mirn::zelchip {

namespace {

bool hasControl(const QString& value)
{
    return std::any_of(value.begin(), value.end(),
        [](QChar c) { return c.category() == QChar::Other_Control || c == QChar::LineSeparator; });
}

bool hasAny(const QString& value, const char* characters)
{
    return std::any_of(
        value.begin(), value.end(), [&](QChar c) { return QString::fromLatin1(characters).contains(c); });
}

std::optional<QString> plain(const QString& value)
{
    const bool hasBlank = std::any_of(value.begin(), value.end(), [](QChar c) { return c.isSpace(); });
    const bool fits = !value.isEmpty() && !hasBlank && !hasControl(value) && !hasAny(value, "\"'`;,=#\\{}");
    return fits ? std::make_optional(value) : std::nullopt;
}

std::optional<QString> inQuotes(const QString& value)
{
    const bool fits = !hasControl(value) && !hasAny(value, "\"\\");
    return fits ? std::make_optional(QLatin1Char('"') + value + QLatin1Char('"')) : std::nullopt;
}

std::optional<QString> asLine(const QString& value)
{
    return hasControl(value) ? std::nullopt : std::make_optional(value);
}

std::optional<QString> asTcl(const QString& value)
{
    return TclInterpreter::list({value});
}

// A value with a blank at an end is quoted as well, because some readers take off such blanks.
std::optional<QString> asCsv(const QString& value)
{
    if (!hasAny(value, "\",;\t|\r\n") && value.trimmed() == value)
        return value;
    return QLatin1Char('"') + QString(value).replace(QLatin1Char('"'), QLatin1String("\"\"")) + QLatin1Char('"');
}

QString escapedForJson(QChar c)
{
    if (c == QLatin1Char('"') || c == QLatin1Char('\\'))
        return QLatin1Char('\\') + c;
    return c < QLatin1Char(' ') ? QStringLiteral("\\u%1").arg(c.unicode(), 4, 16, QLatin1Char('0')) : QString(c);
}

std::optional<QString> asJson(const QString& value)
{
    QString text(QLatin1Char('"'));
    for (const QChar c : value)
        text += escapedForJson(c);
    return text + QLatin1Char('"');
}

} // namespace

const std::vector<Quoting>& quotings()
{
    static const std::vector<Quoting> Table{
        {"plain", "a text that is not empty and has no blank, no control character and none of \" ' ` ; , = # \\ { }",
            plain},
        {"quoted", "a text without control characters, \" and \\", inQuotes},
        {"line", "a text without control characters", asLine},
        {"tcl", "any text", asTcl},
        {"csv", "any text", asCsv},
        {"json", "any text", asJson},
    };
    return Table;
}

const Quoting* findQuoting(const QString& name)
{
    const auto it = std::find_if(
        quotings().begin(), quotings().end(), [&](const Quoting& known) { return name == QLatin1String(known.name); });
    return it == quotings().end() ? nullptr : &*it;
}

} // namespace mirn::zelchip
