// SPDX-License-Identifier: MIT
#include "platform/contract/zelproject.h"

zelproject::zelproject() = default;

zelproject* zelproject::getInstance()
{
    static zelproject project;
    return &project;
}

const std::string& zelproject::flowName() const
{
    return m_flowName;
}

void zelproject::setFlowName(const std::string& name)
{
    m_flowName = name;
}
