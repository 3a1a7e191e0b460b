// SPDX-License-Identifier: MIT
#include "host/design/changecommand.h"

#include <utility>

namespace mirn::zelchip {

ChangeCommand::ChangeCommand(zelengine::ReferenceEngine& engine, std::vector<DesignChange> changes)
    : QUndoCommand(changes.front().text)
    , m_engine(engine)
    , m_changes(std::move(changes))
{ }

QStringList ChangeCommand::commands(bool isForward) const
{
    QStringList result;
    for (const DesignChange& change : m_changes) {
        const QStringList commands = change.commands(m_engine, isForward);
        result = isForward ? result + commands : commands + result;
    }
    return result;
}

void ChangeCommand::undo()
{
    for (auto change = m_changes.rbegin(); change != m_changes.rend(); ++change)
        change->apply(m_engine, false);
}

void ChangeCommand::redo()
{
    if (!std::exchange(m_isMade, true))
        return;
    for (const DesignChange& change : m_changes)
        change.apply(m_engine, true);
}

} // namespace mirn::zelchip
