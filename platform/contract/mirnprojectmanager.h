// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <memory>
#include <string>
#include <vector>

// One implementation of a project, with a directory of its own. The component puts the parser's scratch file there.
class ZELPLATFORM_EXPORT MirnImplementation
{
public:
    // `fullPath` is its directory, in the encoding of the file system, without a slash at the end.
    MirnImplementation(std::string name, std::string fullPath);

    // Returns the name by which the project finds it.
    [[nodiscard]] const std::string& name() const;

    // Returns the implementation's directory, without a slash at the end.
    [[nodiscard]] std::string getImplementFullPath() const;

private:
    std::string m_name;
    std::string m_fullPath;
};

// A project and its implementations, which it owns. The host creates it when it opens a project; the component only
// reads it.
class ZELPLATFORM_EXPORT MirnProject
{
public:
    // The project starts without implementations.
    explicit MirnProject(std::string name);
    ~MirnProject();
    MirnProject(const MirnProject&) = delete;
    MirnProject& operator=(const MirnProject&) = delete;

    // The name is for the host; the component does not show it.
    [[nodiscard]] const std::string& name() const;

    // Adds an implementation. It replaces one of the same name.
    void addImplementation(std::unique_ptr<MirnImplementation> implementation);

    // Sets the implementation that the component works in. It need not exist yet.
    void setDefaultImplementation(const std::string& name);

    // Returns an empty text if none was set.
    [[nodiscard]] std::string getDefaultImplementation() const;

    // Returns null if there is no implementation of that name. The project owns it.
    [[nodiscard]] MirnImplementation* getImplementation(const std::string& name) const;

private:
    std::string m_name;
    std::string m_defaultImplementation;
    std::vector<std::unique_ptr<MirnImplementation>> m_implementations;
};

// Owns the open project of the process, if any.
class ZELPLATFORM_EXPORT MirnProjectManager
{
public:
    // Returns the manager of the process; never null.
    static MirnProjectManager* getProjectManager();

    // Returns null while no project is open.
    [[nodiscard]] MirnProject* getProject() const;

    // Replaces the open project and deletes the previous one; null closes the project.
    void setProject(std::unique_ptr<MirnProject> project);

private:
    MirnProjectManager();
    ~MirnProjectManager();

    std::unique_ptr<MirnProject> m_project;
};
