// SPDX-License-Identifier: MIT
#include "host/project/preparedparser.h"

namespace mirn::zelchip {

bool PreparedParser::prepare(const std::string& drawingFile, const std::string& workingPath)
{
    m_isLoaded = SVGParser::loadSVGElements(drawingFile, workingPath);
    m_preparedFile = drawingFile;
    return m_isLoaded;
}

bool PreparedParser::loadSVGElements(const std::string& drawingFile, const std::string& workingPath)
{
    const bool isPrepared = !m_preparedFile.empty() && m_preparedFile == drawingFile;
    m_preparedFile.clear();
    return isPrepared ? m_isLoaded : SVGParser::loadSVGElements(drawingFile, workingPath);
}

} // namespace mirn::zelchip
