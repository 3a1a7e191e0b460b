// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <string>

// The project data of the engine library. There is one object for the process, created on first use. The host sets the
// flow name before it constructs the chip view, whose menus depend on it.
class ZELPLATFORM_EXPORT zelproject
{
public:
    // Never returns null.
    static zelproject* getInstance();

    // The flow name is an 8-bit text, empty while no flow is known. "Post Synthesis Planning" is the planning flow.
    [[nodiscard]] const std::string& flowName() const;
    void setFlowName(const std::string& name);

private:
    zelproject();

    std::string m_flowName;
};
