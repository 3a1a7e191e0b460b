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
    QString directory; // absolute; made by whoever first writes into it
};

// What a project file says, with all paths made absolute.
struct Project
{
    QString directory;
    QString name;
    QString flow; // "Post Synthesis Planning" is the flow in which nothing can be changed
    QString deviceFile;
    QString designFile; // empty: no design
    std::vector<Implementation> implementations;
    QString defaultImplementation; // the name of one of them, or empty when there are none

    // Null when there is none of that name.
    [[nodiscard]] const Implementation* implementation(const QString& implementationName) const;
};

// Reads the project.json of a folder (docs/schemas/project.schema.json). Nothing, with a message in *error, when it
// cannot be read or contradicts itself. Neither pointer may be null.
[[nodiscard]] std::optional<Project> readProject(const QString& directory, QString* error, QStringList* warnings);

} // namespace mirn::zelengine
