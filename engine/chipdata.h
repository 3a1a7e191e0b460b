// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelattributes.h"
#include "platform/contract/zelchipdata.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

namespace mirn::zelengine {

class Design;
class Device;
class SettingStore;

// The attributes of one chip record, by key. ChipData owns it and fills it.
class AttributeBag final : public zelattributes
{
public:
    void insert(const std::string& key, const std::string& value) { m_values[key] = value; }

    [[nodiscard]] const std::string* getAttributeValue(const std::string* key) const override;

private:
    std::map<std::string, std::string> m_values;
};

// The device as the chip view sees it: the file names and one record per site. The engine owns it. An occupied site has
// its kind's colour and names the resource in its tooltip, and shows a conflict if a setting puts it out of use. A free
// site has neither, so that it looks as drawn.
class ChipData final : public zelchipdata
{
public:
    explicit ChipData(const Device& device);

    void setFilterFile(const std::string& fileName) { m_filterFile = fileName; }

    // Invalidates the records that were handed out.
    void update(const Device& device, const Design& design, const SettingStore& settings);

    [[nodiscard]] const std::string& drawingFile() const override { return m_drawingFile; }
    [[nodiscard]] const std::string& filterFile() const override { return m_filterFile; }
    [[nodiscard]] const std::vector<const zelchiprecord*>& records() const override { return m_recordPointers; }

private:
    std::string m_drawingFile;
    std::string m_filterFile;
    std::vector<AttributeBag> m_bags;
    std::vector<zelchiprecord> m_records;
    std::vector<const zelchiprecord*> m_recordPointers;
};

} // namespace mirn::zelengine
