// SPDX-License-Identifier: MIT
#pragma once

#include "tests/engine/projectfolder.h"

// 200 x 100 units. A channel (id 11, rectangle 10,10 40x40, tooltip of two lines) with its label on top and a detail of
// a layer that is hidden when the drawing fits; a named polygon without id (60,10 40x40), a rectangle without any of
// these (110,10 40x40), a line (10,80 to 190,80).
inline QByteArray smallDrawing()
{
    return zeltest::dataFile("host/drawings/small.svg");
}

// One rectangle, and two things that are not drawn as they should.
inline QByteArray drawingWithWarnings()
{
    return zeltest::dataFile("host/drawings/warnings.svg");
}

// The files that a host opens, below one temporary folder: a project with a drawing, drawings by themselves, and such
// that cannot be opened. The cache folder lies there too.
class HostFiles
{
public:
    explicit HostFiles(const QByteArray& resources = "[]")
        : project(resources)
        , m_folder(QDir::tempPath() + "/zel host \u00e4-XXXXXX")
        , m_cacheHome(qgetenv("XDG_CACHE_HOME"))
    {
        qputenv("XDG_CACHE_HOME", QFile::encodeName(path("cache")));
        project.write("small.svg", smallDrawing());
        project.write("filter.txt", "\"channel\" 11\n");
    }

    ~HostFiles()
    {
        if (m_cacheHome.isNull())
            qunsetenv("XDG_CACHE_HOME");
        else
            qputenv("XDG_CACHE_HOME", m_cacheHome);
    }

    // The path of a file; its folder has a blank and an umlaut in its name.
    [[nodiscard]] QString path(const QString& fileName) const { return m_folder.filePath(fileName); }
    QString write(const QString& fileName, const QByteArray& content)
    {
        return zeltest::writeFile(path(fileName), content);
    }

    // A message without the folder's path in front of the file name.
    [[nodiscard]] QString withoutPath(const QString& message) const
    {
        return project.withoutPath(message).remove(m_folder.path() + '/');
    }

    ProjectFolder project;

private:
    QTemporaryDir m_folder;
    QByteArray m_cacheHome; // of the environment before
};
