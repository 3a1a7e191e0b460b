// SPDX-License-Identifier: MIT
#pragma once

#include "host/design/designchange.h"

#include <QUndoCommand>

#include <vector>

namespace mirn::zelchip {

// One undo step: changes in the order in which they were made. They are made before the step is pushed, when they can
// still be refused, so the first redo() does nothing.
class ChangeCommand final : public QUndoCommand
{
public:
    // At least one change; the first one names the step. The engine is not owned.
    ChangeCommand(zelengine::ReferenceEngine& engine, std::vector<DesignChange> changes);

    // What does the same as redo(), or undo().
    [[nodiscard]] QStringList commands(bool isForward) const;

    void undo() override;
    void redo() override;

private:
    zelengine::ReferenceEngine& m_engine;
    const std::vector<DesignChange> m_changes;
    bool m_isMade = false;
};

} // namespace mirn::zelchip
