// SPDX-License-Identifier: MIT
#include "graphics/elements/attributeregistry.h"

#include "graphics/zelgraphicitemattribute.h"

#include <QtAlgorithms>

#include <utility>

namespace mirn::zelchipview {

AttributeRegistry::AttributeRegistry() = default;

AttributeRegistry::~AttributeRegistry()
{
    deleteAll();
}

ZELGraphicItemAttribute* AttributeRegistry::find(int loadNumber) const
{
    const auto index = static_cast<std::size_t>(loadNumber) - 1; // huge for numbers below 1
    if (index >= m_first.size())
        return m_others.value(loadNumber, nullptr);
    return m_first[index] || m_isLatent.empty() ? m_first[index] : made(index);
}

ZELGraphicItemAttribute* AttributeRegistry::made(std::size_t index) const
{
    const int loadNumber = static_cast<int>(index) + 1;
    if (isLatent(loadNumber)) {
        m_isLatent[index] = false;
        m_first[index] = m_maker(loadNumber).release();
    }
    return m_first[index];
}

void AttributeRegistry::makeOnDemand(int count, Maker make)
{
    m_first.assign(static_cast<std::size_t>(count), nullptr);
    m_isLatent.assign(m_first.size(), true);
    m_maker = std::move(make);
}

bool AttributeRegistry::isLatent(int loadNumber) const
{
    const auto index = static_cast<std::size_t>(loadNumber) - 1; // huge for numbers below 1
    return index < m_isLatent.size() && m_isLatent[index];
}

void AttributeRegistry::set(int loadNumber, ZELGraphicItemAttribute* attribute)
{
    const auto index = static_cast<std::size_t>(loadNumber) - 1; // huge for numbers below 1
    if (index < m_first.size()) {
        m_first[index] = attribute;
        if (index < m_isLatent.size())
            m_isLatent[index] = false;
        return;
    }
    if (index > m_first.size()) {
        m_others.insert(loadNumber, attribute);
        return;
    }
    m_first.push_back(attribute);
    m_others.remove(loadNumber);
    // A host may register numbers out of order: those that follow now move into the list.
    while (!m_others.isEmpty() && m_others.contains(static_cast<int>(m_first.size()) + 1))
        m_first.push_back(m_others.take(static_cast<int>(m_first.size()) + 1));
}

bool AttributeRegistry::handOut(ZELGraphicItemAttribute& attribute)
{
    return !std::exchange(attribute.m_isHandedOut, true);
}

void AttributeRegistry::deleteAll()
{
    qDeleteAll(m_first);
    m_first.clear();
    m_isLatent.clear();
    m_maker = {};
    qDeleteAll(m_others);
    m_others.clear();
}

} // namespace mirn::zelchipview
