// SPDX-License-Identifier: MIT
#include "tests/host/hostfiles.h"

#include <QDir>
#include <QFile>

HostFiles::HostFiles(const QByteArray& resources)
    : project(resources)
    , m_folder(QDir::tempPath() + "/zel host \u00e4-XXXXXX")
    , m_cacheHome(qgetenv("XDG_CACHE_HOME"))
{
    qputenv("XDG_CACHE_HOME", QFile::encodeName(path("cache")));
    project.write("small.svg", smallDrawing());
    project.write("filter.txt", "\"channel\" 11\n");
}

HostFiles::~HostFiles()
{
    if (m_cacheHome.isNull())
        qunsetenv("XDG_CACHE_HOME");
    else
        qputenv("XDG_CACHE_HOME", m_cacheHome);
}

QString HostFiles::write(const QString& fileName, const QByteArray& content)
{
    QFile file(path(fileName));
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(file.fileName()));
    return file.fileName();
}

QString HostFiles::path(const QString& fileName) const
{
    return m_folder.filePath(fileName);
}

QString HostFiles::withoutPath(const QString& message) const
{
    return project.withoutPath(message).remove(m_folder.path() + QLatin1Char('/'));
}

QByteArray smallDrawing()
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

QByteArray drawingWithWarnings()
{
    return R"svg(<svg xmlns="http://www.w3.org/2000/svg" width="100" height="50">
<linearGradient id="g"><stop stop-color="#ff0000"/></linearGradient>
<rect width="100" height="50" fill="url(#g)"/>
<image width="5" height="5"/>
</svg>
)svg";
}
