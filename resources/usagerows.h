// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QStringList>

class zelchipengine;

namespace mirn::zelchipview {

// The usage figures as texts: the head is asked for once, the rows every time.
class UsageRows final
{
public:
    void setEngine(zelchipengine* engine) { m_engine = engine; } // not owned

    [[nodiscard]] QStringList& head();

    // One list per row: the row's label, then its cells.
    [[nodiscard]] QList<QStringList> rows() const;

private:
    zelchipengine* m_engine = nullptr;
    QStringList m_head;
};

} // namespace mirn::zelchipview
