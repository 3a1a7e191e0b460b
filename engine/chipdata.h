// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelattributes.h"
#include "platform/contract/zelchipdata.h"

#include <map>
#include <set>
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

// The device as the chip view sees it: the file names, and a record of each site that is or was occupied, or whose
// attributes say how it looks; of the others there is nothing to tell, and there may be millions. The engine owns it.
// An occupied site has its kind's colour and names the resource in its tooltip, and shows a conflict if a setting puts
// it out of use. A free site has neither, so that it looks as drawn.
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
    std::set<int> m_told; // the ids of the sites with a record; who is told of once stays, because the view remembers
    std::vector<AttributeBag> m_bags;
    std::vector<zelchiprecord> m_records;
    std::vector<const zelchiprecord*> m_recordPointers;
};

} // namespace mirn::zelengine
