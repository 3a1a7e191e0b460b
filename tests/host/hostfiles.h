// SPDX-License-Identifier: MIT
#pragma once

#include "tests/engine/projectfolder.h"

// 200 x 100 units. A channel (id 11, rectangle 10,10 40x40, tooltip of two lines) with its label on top and a detail of
// a layer that is hidden when the drawing fits; a named polygon without id (60,10 40x40), a rectangle without any of
// these (110,10 40x40), a line (10,80 to 190,80).
inline QByteArray smallDrawing()
{
    return R"svg(<svg xmlns="http://www.w3.org/2000/svg" xmlns:tovanel="urn:tovanel:chip-drawing" width="200" height="100"
  tovanel:maximum-scale="50">
<metadata>
  <tovanel:layer number="0" minimum="-100" maximum="100"/>
  <tovanel:layer number="1" minimum="20" maximum="100"/>
</metadata>
<rect tovanel:id="11" x="10" y="10" width="40" height="40" fill="#a0c0e0" tovanel:popup="Channel 0&#10;of unit U0"/>
<rect tovanel:id="12" tovanel:layer="1" x="15" y="15" width="30" height="30" fill="#ffffff"/>
<text tovanel:id="13" x="12" y="35" font-size="10">CH0 rx</text>
<polygon id="wedge" points="60,10 100,10 100,50 60,50 60,20" fill="#e0a0c0"/>
<rect x="110" y="10" width="40" height="40" fill="#c0e0a0"/>
<line tovanel:id="14" x1="10" y1="80" x2="190" y2="80" stroke="#000000" stroke-width="4"/>
</svg>
)svg";
}

// One rectangle, and two things that are not drawn as they should.
inline QByteArray drawingWithWarnings()
{
    return R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="100" height="50">
<linearGradient id="g"><stop stop-color="#ff0000"/></linearGradient>
<rect width="100" height="50" fill="url(#g)"/>
<image width="5" height="5"/>
</svg>
)svg";
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
