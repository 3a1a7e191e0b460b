// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/svgparser.h"

#include <string>

namespace mirn::zelchip {

// A parser that has read its drawing before the chip view asks for it, so that the host learns of errors while the
// previous project is still on the screen, and no drawing is read twice.
class PreparedParser final : public SVGParser
{
public:
    // Reads the drawing; loadSVGElements() of the same file then gives the result at once, one time.
    bool prepare(const std::string& drawingFile, const std::string& workingPath);

    bool loadSVGElements(const std::string& drawingFile, const std::string& workingPath) override;

private:
    std::string m_preparedFile; // empty: none
    bool m_isLoaded = false;
};

} // namespace mirn::zelchip
