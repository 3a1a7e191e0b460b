// SPDX-License-Identifier: MIT
#include "platform/contract/mirnprojectmanager.h"

#include <algorithm>
#include <utility>

MirnImplementation::MirnImplementation(std::string name, std::string fullPath)
    : m_name(std::move(name))
    , m_fullPath(std::move(fullPath))
{ }

const std::string& MirnImplementation::name() const
{
    return m_name;
}

std::string MirnImplementation::getImplementFullPath() const
{
    return m_fullPath;
}

MirnProject::MirnProject(std::string name)
    : m_name(std::move(name))
{ }

MirnProject::~MirnProject() = default;

const std::string& MirnProject::name() const
{
    return m_name;
}

void MirnProject::addImplementation(std::unique_ptr<MirnImplementation> implementation)
{
    const auto sameName = [&](const auto& other) { return other->name() == implementation->name(); };
    const auto found = std::find_if(m_implementations.begin(), m_implementations.end(), sameName);
    if (found != m_implementations.end())
        *found = std::move(implementation);
    else
        m_implementations.push_back(std::move(implementation));
}

void MirnProject::setDefaultImplementation(const std::string& name)
{
    m_defaultImplementation = name;
}

std::string MirnProject::getDefaultImplementation() const
{
    return m_defaultImplementation;
}

MirnImplementation* MirnProject::getImplementation(const std::string& name) const
{
    const auto found = std::find_if(m_implementations.begin(), m_implementations.end(),
        [&](const auto& implementation) { return implementation->name() == name; });
    return found != m_implementations.end() ? found->get() : nullptr;
}

MirnProjectManager::MirnProjectManager() = default;
MirnProjectManager::~MirnProjectManager() = default;

MirnProjectManager* MirnProjectManager::getProjectManager()
{
    static MirnProjectManager manager;
    return &manager;
}

MirnProject* MirnProjectManager::getProject() const
{
    return m_project.get();
}

void MirnProjectManager::setProject(std::unique_ptr<MirnProject> project)
{
    m_project = std::move(project);
}
