// SPDX-License-Identifier: MIT
#pragma once

#include "graphics/elements/graphicitemdynamicattribute.h"
#include "graphics/zelconstants.h"

#include <QMap>
#include <QVector>

#include <optional>
#include <string>
#include <vector>

class zelchipdata;
class zelchipengine;

namespace mirn::zelchipview {

// The values that the engine keeps per element: colours and tooltips for the drawing, and the settings of the dynamic
// dialogs.
class DynamicValues final
{
public:
    using GraphicsInfo = QMap<QString, GraphicItemDynamicAttribute>; // by element id in decimal
    using ValueLists = QMap<QString, QVector<QString>>; // by setting key, the value in force first

    void setEngine(zelchipengine* engine) { m_engine = engine; } // not owned

    // Asked for anew at each call. The one map of the process; its content is valid until the next call.
    [[nodiscard]] GraphicsInfo& graphicsInfo();

    // Null for another type than the DCU settings and for an element without values; else valid until the next call.
    [[nodiscard]] ValueLists* valueLists(Enum_Dynamic_Dialog_Type type, int id);

    [[nodiscard]] bool hasDialog(int id) const;

    // Writes one value into the engine.
    void write(int id, Enum_Dynamic_Dialog_Type type, const QString& key, const QString& value);

private:
    // What the engine told of an element, to see whether it tells the same again.
    struct Told
    {
        unsigned int id;
        std::optional<std::string> fill;
        std::optional<std::string> popup;
    };

    [[nodiscard]] bool isAsToldBefore(const zelchipdata* chip) const;
    void read(const zelchipdata* chip);

    zelchipengine* m_engine = nullptr;
    std::vector<Told> m_told;
    GraphicsInfo m_info; // of what was told; the callers' map is a copy that they may change
    ValueLists m_valueLists;
};

} // namespace mirn::zelchipview
