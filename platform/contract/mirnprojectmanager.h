// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <memory>
#include <string>
#include <vector>

// Where the host keeps the open project and its implementations. The component only reads; a host that opens a project
// fills it in. File names are in the encoding of the file system.

class ZELPLATFORM_EXPORT MirnImplementation
{
public:
    MirnImplementation(std::string name, std::string fullPath);

    [[nodiscard]] const std::string& name() const;

    // The implementation's directory, without a slash at the end.
    [[nodiscard]] std::string getImplementFullPath() const;

private:
    std::string m_name;
    std::string m_fullPath;
};

class ZELPLATFORM_EXPORT MirnProject
{
public:
    explicit MirnProject(std::string name);
    ~MirnProject();
    MirnProject(const MirnProject&) = delete;
    MirnProject& operator=(const MirnProject&) = delete;

    [[nodiscard]] const std::string& name() const;

    // A second implementation of the same name replaces the first.
    void addImplementation(std::unique_ptr<MirnImplementation> implementation);
    void setDefaultImplementation(const std::string& name);

    // Empty when none was set.
    [[nodiscard]] std::string getDefaultImplementation() const;

    // Null when there is none of that name; the project's while it is open.
    [[nodiscard]] MirnImplementation* getImplementation(const std::string& name) const;

private:
    std::string m_name;
    std::string m_defaultImplementation;
    std::vector<std::unique_ptr<MirnImplementation>> m_implementations;
};

class ZELPLATFORM_EXPORT MirnProjectManager
{
public:
    // The process-wide manager, never null.
    static MirnProjectManager* getProjectManager();

    // Null while no project is open.
    [[nodiscard]] MirnProject* getProject() const;

    // Replaces the open project and deletes the one before; null closes.
    void setProject(std::unique_ptr<MirnProject> project);

private:
    MirnProjectManager();
    ~MirnProjectManager();

    std::unique_ptr<MirnProject> m_project;
};
