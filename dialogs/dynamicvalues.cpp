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

// Returns null if the record has no such value.
const std::string* valueOf(const zelchiprecord& record, const std::string& key)
{
    return record.attributes ? record.attributes->getAttributeValue(&key) : nullptr;
}

bool isSame(const std::optional<std::string>& told, const std::string* value)
{
    return value ? told == *value : !told;
}

std::optional<std::string> copyOf(const std::string* value)
{
    return value ? std::optional<std::string>(*value) : std::nullopt;
}

QString textOf(const std::optional<std::string>& value)
{
    return value ? fromEngineText(*value) : ZEL_DYNAMIC_EMPTY_STRING;
}

std::string idText(int id)
{
    return std::to_string(id);
}

} // namespace

DynamicValues::GraphicsInfo& DynamicValues::graphicsInfo()
{
    // The map is static, because callers may keep the reference beyond the controller's lifetime.
    static GraphicsInfo info;
    diagTrace("call ZEL engine API: chip()", "getGraphicsDynamicInfo");
    const zelchipdata* chip = m_engine ? m_engine->chip() : nullptr;
    diagTrace("end", "getGraphicsDynamicInfo");
    if (!isAsToldBefore(chip))
        read(chip);
    info = m_info;
    return info;
}

// Most refreshes change a few values or none, and comparing them is much faster than making texts and a map of all.
bool DynamicValues::isAsToldBefore(const zelchipdata* chip) const
{
    std::size_t number = 0;
    if (chip) {
        for (const zelchiprecord* record : chip->records()) {
            if (!record)
                continue;
            if (number == m_told.size())
                return false;
            const Told& told = m_told[number++];
            if (told.id != record->id || !isSame(told.fill, valueOf(*record, FillKey))
                || !isSame(told.popup, valueOf(*record, PopupKey)))
                return false;
        }
    }
    return number == m_told.size();
}

void DynamicValues::read(const zelchipdata* chip)
{
    m_told.clear();
    m_info.clear();
    if (!chip)
        return;
    for (const zelchiprecord* record : chip->records()) {
        if (!record)
            continue;
        m_told.push_back({record->id, copyOf(valueOf(*record, FillKey)), copyOf(valueOf(*record, PopupKey))});
        GraphicItemDynamicAttribute values;
        values.fill = textOf(m_told.back().fill);
        values.popup = textOf(m_told.back().popup);
        m_info.insert(QString::number(record->id, 10), values);
    }
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
