// SPDX-License-Identifier: MIT
#include "host/console/commandhistory.h"

namespace mirn::zelchip {

CommandHistory::CommandHistory(int capacity)
    : m_capacity(capacity)
{
    endWalk();
}

void CommandHistory::add(const QString& script)
{
    append(script);
    endWalk();
}

void CommandHistory::setEntries(const QStringList& entries)
{
    m_entries.clear();
    for (const QString& entry : entries)
        append(entry);
    endWalk();
}

void CommandHistory::append(const QString& script)
{
    if (script.trimmed().isEmpty() || (!m_entries.isEmpty() && m_entries.last() == script))
        return;
    m_entries.append(script);
    if (m_entries.size() > m_capacity)
        m_entries.removeFirst();
}

void CommandHistory::endWalk()
{
    m_walked = m_entries;
    m_walked.append(QString());
    m_position = static_cast<int>(m_walked.size()) - 1;
}

std::optional<QString> CommandHistory::older(const QString& shown)
{
    return stepTo(m_position - 1, shown);
}

std::optional<QString> CommandHistory::newer(const QString& shown)
{
    return stepTo(m_position + 1, shown);
}

std::optional<QString> CommandHistory::stepTo(int position, const QString& shown)
{
    if (position < 0 || position >= m_walked.size())
        return std::nullopt;
    m_walked[m_position] = shown;
    m_position = position;
    return m_walked.at(position);
}

} // namespace mirn::zelchip
