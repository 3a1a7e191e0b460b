// SPDX-License-Identifier: MIT
#include "smallengine.h"

namespace {

const std::string PllPath = "demo/pll"; // the names of the root and of the rows below it

bool isSite(const std::string& id)
{
    return id == "1" || id == "2";
}

} // namespace

SmallEngine::SmallEngine(const std::string& folder)
{
    m_chip.drawing = folder + "/board.svg";
    m_chip.filter = folder + "/kinds.txt";
    m_root.name = &m_rootName;
    m_root.children = &m_rows;
    m_pll.name = &m_pllName;
    m_pll.type = &m_pllType;
    m_pll.columns = &m_pllColumns;
    m_pll.draggable = true;
}

bool SmallEngine::place(const std::string& resource, int site)
{
    if (resource != PllPath || !isSite(std::to_string(site)))
        return false;
    m_site = site;
    return true;
}

std::vector<std::vector<std::string>> SmallEngine::getResources()
{
    return {{"PLL", m_site ? "1" : "0", "2"}};
}

std::string SmallEngine::getResourceSummary(const std::string* name)
{
    return *name == PllPath && !m_site ? "not placed" : std::string();
}

int SmallEngine::getResourceType(const std::string* name)
{
    return *name == PllPath || isSite(*name) ? ZEL_RESOURCE_PLL : ZEL_RESOURCE_UNKNOWN;
}

bool SmallEngine::canDrop(const std::string* rsc, const std::string* site)
{
    return *rsc == PllPath && isSite(*site);
}

bool SmallEngine::showProbPlaceItem(const std::string* rsc, const std::string*, std::list<std::string>& items)
{
    if (*rsc == PllPath)
        items = {"1", "2"};
    return !items.empty();
}

void SmallEngine::refresh(int)
{
    m_siteName = m_site ? "PLL_" + std::string(m_site == 1 ? "L" : "R") : std::string();
}
