// SPDX-License-Identifier: MIT
#include "dialogs/dynamicvalues.h"

#include "platform/contract/zelattributes.h"
#include "platform/contract/zelchipdata.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zeltext.h"
#include "platform/contract/zeltrace.h"

namespace mirn::zelchipview {

namespace {

const std::string FillKey = "fill";
const std::string PopupKey = "tovanel:popup";

QString attributeText(const zelattributes* attributes, const std::string& key)
{
    const std::string* value = attributes ? attributes->getAttributeValue(&key) : nullptr;
    return value ? fromEngineText(*value) : ZEL_DYNAMIC_EMPTY_STRING;
}

std::string idText(int id)
{
    return std::to_string(id);
}

} // namespace

DynamicValues::GraphicsInfo& DynamicValues::graphicsInfo()
{
    // Callers may keep the reference beyond the controller's end.
    static GraphicsInfo info;
    info.clear();
    diagTrace("call ZEL engine API: chip()", "getGraphicsDynamicInfo");
    const zelchipdata* chip = m_engine ? m_engine->chip() : nullptr;
    diagTrace("end", "getGraphicsDynamicInfo");
    if (!chip)
        return info;
    for (const zelchiprecord* record : chip->records()) {
        if (!record)
            continue;
        GraphicItemDynamicAttribute values;
        values.fill = attributeText(record->attributes, FillKey);
        values.popup = attributeText(record->attributes, PopupKey);
        info.insert(QString::number(record->id, 10), values);
    }
    return info;
}

DynamicValues::ValueLists* DynamicValues::valueLists(Enum_Dynamic_Dialog_Type type, int id)
{
    if (type != DYNAMIC_DIALOG_DCU)
        return nullptr;
    m_valueLists.clear();
    const std::string engineId = idText(id);
    const auto* lists = m_engine ? m_engine->getDynamicDialogValues(&engineId, type) : nullptr;
    if (!lists)
        return nullptr;
    for (const auto& [key, values] : *lists) {
        for (const std::string& value : values)
            m_valueLists[fromEngineText(key)].append(fromEngineText(value));
    }
    return &m_valueLists;
}

bool DynamicValues::hasDialog(int id) const
{
    const std::string engineId = idText(id);
    return m_engine && m_engine->hasDynamicDialog(&engineId);
}

void DynamicValues::write(int id, Enum_Dynamic_Dialog_Type type, const QString& key, const QString& value)
{
    const std::string engineId = idText(id);
    const std::string engineKey = toEngineText(key);
    const std::string engineValue = toEngineText(value);
    if (m_engine)
        m_engine->setDynamicDialogValue(&engineId, type, &engineKey, &engineValue);
}

} // namespace mirn::zelchipview
