// SPDX-License-Identifier: MIT
#include "host/tcl/arguments.h"

namespace mirn::zelchip {

Arguments::Arguments(
    const QStringList& words, const QString& usage, const QStringList& options, const QStringList& flags)
    : m_usage(usage)
{
    for (int i = 0; i < words.size(); ++i) {
        if (flags.contains(words[i]))
            m_values.insert(words[i], QString());
        else if (!options.contains(words[i]))
            m_positional.append(words[i]);
        else if (i + 1 < words.size() && !m_values.contains(words[i]))
            m_values.insert(words[i], words[i + 1]), ++i;
        else
            failUsage();
    }
}

QString Arguments::text(const QString& option)
{
    if (!m_values.contains(option))
        failUsage();
    return m_values.value(option);
}

int Arguments::number(const QString& option)
{
    const QString value = text(option);
    bool isNumber = false;
    const int number = value.toInt(&isNumber);
    if (!isNumber && isOk())
        m_error = QStringLiteral("expected integer but got \"%1\"").arg(value);
    return number;
}

QStringList Arguments::positional(int least, int most)
{
    if (m_positional.size() < least || m_positional.size() > most)
        failUsage();
    return m_positional;
}

void Arguments::failUsage()
{
    if (m_error.isEmpty())
        m_error = QStringLiteral("wrong # args: should be \"%1\"").arg(m_usage);
}

TclInterpreter::Command ensemble(Subcommands subcommands)
{
    return [subcommands = std::move(subcommands)](const QStringList& words) {
        const auto found = subcommands.find(words.value(1));
        if (found != subcommands.end())
            return found->second(words.mid(2));
        QStringList names;
        for (const auto& subcommand : subcommands)
            names.append(subcommand.first);
        if (words.size() < 2)
            return TclResult::error(
                QStringLiteral("wrong # args: should be \"%1 subcommand ?arg ...?\"").arg(words.value(0)));
        return TclResult::error(QStringLiteral("unknown subcommand \"%1\" of %2: must be %3")
                                    .arg(words[1], words[0], names.join(QStringLiteral(", "))));
    };
}

TclResult resultOf(const QString& error)
{
    return error.isEmpty() ? TclResult::value() : TclResult::error(error);
}

} // namespace mirn::zelchip
