// SPDX-License-Identifier: MIT
#pragma once

#include <QList>
#include <QString>

class zelchipengine;

namespace mirn::zelchipview {

// Asks the engine where a resource may go, and writes three trace lines for each query. The controller owns it.
class DropQuery final
{
public:
    void setEngine(zelchipengine* engine) { m_engine = engine; } // not owned

    // Returns true if the engine allows the resource (resource name) on the site (element id in decimal).
    [[nodiscard]] bool isAllowed(const QString& resource, const QString& site) const;

    // Returns the element ids of the probable sites of the resource while the pointer rests on `site`. `caller` names
    // the operation in the trace.
    [[nodiscard]] QList<int> probableSites(const QString& resource, const QString& site, const char* caller) const;

private:
    zelchipengine* m_engine = nullptr;
};

} // namespace mirn::zelchipview
