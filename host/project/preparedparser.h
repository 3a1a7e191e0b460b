// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/svgparser.h"

#include <string>

namespace mirn::zelchip {

// A parser that reads its drawing before the chip view asks for it. The host thus learns of errors while the previous
// project is still on the screen, and no drawing is read twice. The session owns it until the controller takes it over.
class PreparedParser final : public SVGParser
{
public:
    // Reads the drawing. The next loadSVGElements(), if it is for the same file, returns this result at once.
    bool prepare(const std::string& drawingFile, const std::string& workingPath);

    bool loadSVGElements(const std::string& drawingFile, const std::string& workingPath) override;

private:
    std::string m_preparedFile; // empty if there is none
    bool m_isLoaded = false;
};

} // namespace mirn::zelchip
