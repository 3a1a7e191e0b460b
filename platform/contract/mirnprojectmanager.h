// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <memory>
#include <string>
#include <vector>

// One way of working on a project, with a directory of its own. The component puts the parser's scratch file there.
class ZELPLATFORM_EXPORT MirnImplementation
{
public:
    // `fullPath`: its directory, in the encoding of the file system.
    MirnImplementation(std::string name, std::string fullPath);

    // As the project knows it.
    [[nodiscard]] const std::string& name() const;

    // The implementation's directory, without a slash at the end.
    [[nodiscard]] std::string getImplementFullPath() const;

private:
    std::string m_name;
    std::string m_fullPath;
};

// A project and its implementations, which it owns. The component only reads; a host that opens a project makes one.
class ZELPLATFORM_EXPORT MirnProject
{
public:
    // Without implementations.
    explicit MirnProject(std::string name);
    ~MirnProject();
    MirnProject(const MirnProject&) = delete;
    MirnProject& operator=(const MirnProject&) = delete;

    // For the host; the component does not show it.
    [[nodiscard]] const std::string& name() const;

    // A second implementation of the same name replaces the first.
    void addImplementation(std::unique_ptr<MirnImplementation> implementation);

    // The one that the component works in. It need not be there yet.
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

// The open project of the process, if any.
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
