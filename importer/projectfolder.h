// SPDX-License-Identifier: MIT
#pragma once

#include <QString>

namespace mirn::zelimporter {

// A project folder that is made beside its place, and put there only when it is whole. Until then, and if anything goes
// wrong, the project that is there stays as it is; afterwards it is kept under another name, because it holds
// somebody's placement.
class ProjectFolder
{
public:
    explicit ProjectFolder(const QString& target);
    // Removes what was not put in its place.
    ~ProjectFolder();
    ProjectFolder(const ProjectFolder&) = delete;
    ProjectFolder& operator=(const ProjectFolder&) = delete;

    // Both return an empty text for success, else what went wrong.
    [[nodiscard]] QString begin(bool replaces);
    [[nodiscard]] QString finish();

    [[nodiscard]] QString file(const QString& name) const { return m_temporary + QLatin1Char('/') + name; }
    // What finish() has moved the former project to; empty if there was none.
    [[nodiscard]] const QString& former() const { return m_former; }

private:
    [[nodiscard]] QString checkTarget(bool replaces) const;

    const QString m_target; // absolute
    QString m_temporary; // empty when there is none
    QString m_former;
};

} // namespace mirn::zelimporter
