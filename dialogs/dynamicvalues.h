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

// The values that the engine keeps for each element: colours and tooltips of the drawing, and the settings of the
// dynamic dialogs. The controller owns this object, which opens no dialog itself.
class DynamicValues final
{
public:
    using GraphicsInfo = QMap<QString, GraphicItemDynamicAttribute>; // by element id in decimal
    using ValueLists = QMap<QString, QVector<QString>>; // by setting key, the current value first

    void setEngine(zelchipengine* engine) { m_engine = engine; } // not owned

    // Asks the engine at each call. Returns the one map of the process; its content is valid until the next call.
    [[nodiscard]] GraphicsInfo& graphicsInfo();

    // Returns null for a type other than DYNAMIC_DIALOG_DCU and for an element without values. The map is valid until
    // the next call.
    [[nodiscard]] ValueLists* valueLists(Enum_Dynamic_Dialog_Type type, int id);

    [[nodiscard]] bool hasDialog(int id) const;

    // Writes one value into the engine.
    void write(int id, Enum_Dynamic_Dialog_Type type, const QString& key, const QString& value);

private:
    // What the engine reported for an element, kept to notice when it reports the same again.
    struct Told
    {
        unsigned int id;
        std::optional<std::string> fill;
        std::optional<std::string> popup;
        GraphicItemDynamicAttribute* values; // in m_info; valid as long as nothing is inserted or removed there
    };

    [[nodiscard]] bool takeOverChanges(const zelchipdata* chip);
    void read(const zelchipdata* chip);

    zelchipengine* m_engine = nullptr;
    std::vector<Told> m_told;
    GraphicsInfo m_info; // made from m_told; callers get a copy, which they may change
    ValueLists m_valueLists;
};

} // namespace mirn::zelchipview
