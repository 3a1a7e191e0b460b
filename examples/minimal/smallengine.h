// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelchipdata.h"
#include "platform/contract/zelchipengine.h"
#include "platform/contract/zeltreeviewcell.h"

// An engine for the smallest of designs: one PLL, and two sites for it, 1 and 2. The texts and cells that it returns
// are its members, so their addresses do not change; refresh() brings them up to date.
class SmallEngine final : public zelchipengine
{
public:
    // `folder` (in the encoding of the file system) has the drawing and the file with the kinds of elements that the
    // view can mark.
    explicit SmallEngine(const std::string& folder);

    // Carries out the host's command. Returns false if there is no such resource or site.
    bool place(const std::string& resource, int site);

    zelchipdata* chip() override { return &m_chip; }
    zeltreeviewcell* tree() override { return &m_root; }
    const std::map<int, std::string>& headers() override { return m_headers; }
    std::vector<std::vector<std::string>> getResources() override;
    std::vector<std::string> getResourceHeader() override { return {"Used", "Available"}; }
    std::string getResourceSummary(const std::string* name) override;
    int getResourceType(const std::string* name) override;
    bool canDrop(const std::string* rsc, const std::string* site) override;
    bool showProbPlaceItem(const std::string* rsc, const std::string* site, std::list<std::string>& items) override;
    void refresh(int kind) override;

    // Nothing here can be configured, neither by the engine nor in the view's dialog.
    int config(const std::string*) override { return 0; }
    bool hasDynamicDialog(const std::string*) override { return false; }
    const std::map<std::string, std::vector<std::string>>* getDynamicDialogValues(
        const std::string*, unsigned int) override
    {
        return nullptr;
    }
    int setDynamicDialogValue(const std::string*, unsigned int, const std::string*, const std::string*) override
    {
        return 0;
    }

private:
    class Chip final : public zelchipdata
    {
    public:
        const std::string& drawingFile() const override { return drawing; }
        const std::string& filterFile() const override { return filter; }
        const std::vector<const zelchiprecord*>& records() const override { return recordList; }

        std::string drawing;
        std::string filter;
        std::vector<const zelchiprecord*> recordList; // empty: everything looks as it is drawn
    };

    Chip m_chip;
    const std::map<int, std::string> m_headers{{0, "Resource"}, {1, "Site"}};
    const std::string m_rootName = "demo";
    const std::string m_pllName = "pll";
    const std::string m_pllType = "PLL";
    std::string m_siteName;
    std::map<int, const std::string*> m_pllColumns{{1, &m_siteName}};
    zeltreeviewcell m_pll;
    std::vector<zeltreeviewcell*> m_rows{&m_pll};
    zeltreeviewcell m_root;
    int m_site = 0; // the site of the PLL; 0 while it has none
};
