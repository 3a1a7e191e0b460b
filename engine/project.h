// SPDX-License-Identifier: MIT
#pragma once

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace mirn::zelengine {

struct Implementation
{
    QString name;
    QString directory; // absolute; created by whoever first writes into it
};

// The content of a project file, with all paths made absolute.
struct Project
{
    QString directory;
    QString name;
    QString flow; // nothing can be changed in the flow "Post Synthesis Planning"
    QString deviceFile;
    QString designFile; // empty if there is no design
    std::vector<Implementation> implementations;
    QString defaultImplementation; // the name of one of them; empty if there are none

    // Returns null if there is no implementation of that name.
    [[nodiscard]] const Implementation* implementation(const QString& implementationName) const;
};

// Reads the project.json of a folder (docs/schemas/project.schema.json). Returns nothing, with a message in *error, if
// it cannot be read or contradicts itself. Neither pointer may be null.
[[nodiscard]] std::optional<Project> readProject(const QString& directory, QString* error, QStringList* warnings);

} // namespace mirn::zelengine
