// SPDX-License-Identifier: MIT
#include "resources/usagerows.h"

#include "platform/contract/zelchipengine.h"
#include "platform/contract/zeltext.h"

namespace mirn::zelchipview {

namespace {

QStringList toTexts(const std::vector<std::string>& engineTexts)
{
    QStringList texts;
    for (const std::string& text : engineTexts)
        texts.append(fromEngineText(text));
    return texts;
}

} // namespace

QStringList& UsageRows::head()
{
    if (m_head.isEmpty() && m_engine)
        m_head = toTexts(m_engine->getResourceHeader());
    return m_head;
}

QList<QStringList> UsageRows::rows() const
{
    QList<QStringList> rows;
    if (!m_engine)
        return rows;
    for (const std::vector<std::string>& row : m_engine->getResources())
        rows.append(toTexts(row));
    return rows;
}

} // namespace mirn::zelchipview
