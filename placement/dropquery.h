// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

class zelchipengine;

namespace mirn::zelchipview {

// Asks the engine where a resource may go. Each question leaves three trace lines.
class DropQuery final
{
public:
    void setEngine(zelchipengine* engine) { m_engine = engine; } // not owned

    // True when the engine allows the resource on the site (element id in decimal).
    [[nodiscard]] bool isAllowed(const QString& resource, const QString& site) const;

    // The element ids of the probable sites for the resource while the pointer rests on `site`. `caller` names the
    // operation in the trace.
    [[nodiscard]] QList<int> probableSites(const QString& resource, const QString& site, const char* caller) const;

private:
    zelchipengine* m_engine = nullptr;
};

} // namespace mirn::zelchipview
