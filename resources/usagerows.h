// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QStringList>

class zelchipengine;

namespace mirn::zelchipview {

// The usage figures as texts, read from the engine: the titles once, the rows at every call. The controller owns it.
class UsageRows final
{
public:
    void setEngine(zelchipengine* engine) { m_engine = engine; } // not owned

    [[nodiscard]] QStringList& head();

    // Returns one list per row: the row's label, then its cells.
    [[nodiscard]] QList<QStringList> rows() const;

private:
    zelchipengine* m_engine = nullptr;
    QStringList m_head;
};

} // namespace mirn::zelchipview
