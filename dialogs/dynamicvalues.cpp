// SPDX-License-Identifier: MIT
#include "dialogs/dynamicvalues.h"

#include "platform/contract/zelattributes.h"
#include "platform/contract/zelchipdata.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zeltext.h"
#include "platform/contract/zeltrace.h"

#include <utility>

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

// Makes texts of values. Neighbours often have the same value, and then share its text.
class Texts
{
public:
    QString of(const std::optional<std::string>& value)
    {
        if (!value)
            return ZEL_DYNAMIC_EMPTY_STRING;
        if (m_value != value) {
            m_value = value;
            m_text = fromEngineText(*value);
        }
        return m_text;
    }

private:
    std::optional<std::string> m_value;
    QString m_text;
};

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
    info.clear(); // m_info is changed in place only if nobody shares it
    if (!takeOverChanges(chip))
        read(chip);
    info = m_info;
    return info;
}

// From refresh to refresh the engine mostly reports the same elements, and comparing their values is much faster than
// making a map of all. Returns false if the map has to be made anew.
bool DynamicValues::takeOverChanges(const zelchipdata* chip)
{
    std::size_t number = 0;
    Texts fills;
    Texts popups;
    const bool isOneRecordEach = static_cast<std::size_t>(m_info.size()) == m_told.size();
    if (chip) {
        for (const zelchiprecord* record : chip->records()) {
            if (!record)
                continue;
            if (number == m_told.size() || m_told[number].id != record->id)
                return false;
            Told& told = m_told[number++];
            const std::string* fill = valueOf(*record, FillKey);
            const std::string* popup = valueOf(*record, PopupKey);
            if (isSame(told.fill, fill) && isSame(told.popup, popup))
                continue;
            if (!isOneRecordEach || !m_info.isDetached())
                return false;
            told.fill = copyOf(fill);
            told.popup = copyOf(popup);
            *told.values = {popups.of(told.popup), fills.of(told.fill)};
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
    Texts fills;
    Texts popups;
    for (const zelchiprecord* record : chip->records()) {
        if (!record)
            continue;
        Told told{record->id, copyOf(valueOf(*record, FillKey)), copyOf(valueOf(*record, PopupKey)), nullptr};
        const GraphicItemDynamicAttribute values{popups.of(told.popup), fills.of(told.fill)};
        told.values = &m_info.insert(QString::number(record->id, 10), values).value();
        m_told.push_back(std::move(told));
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
