// SPDX-License-Identifier: MIT
#pragma once

#include "tests/engine/projectfolder.h"

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

// The files that a host opens, below one temporary folder: a project with a drawing, drawings by themselves, and such
// that cannot be opened. The cache folder lies there too.
class HostFiles
{
public:
    explicit HostFiles(const QByteArray& resources = "[]");
    ~HostFiles();

    ProjectFolder project;

    // The file's path; its folder has a blank and an umlaut in its name.
    QString write(const QString& fileName, const QByteArray& content);
    [[nodiscard]] QString path(const QString& fileName) const;

    // A message without the folder's path in front of the file name.
    [[nodiscard]] QString withoutPath(const QString& message) const;

private:
    QTemporaryDir m_folder;
    QByteArray m_cacheHome; // of the environment before
};

// 200 x 100 units. A channel (id 11, rectangle 10,10 40x40, tooltip of two lines) with its label on top and a detail of
// a layer that is hidden when the drawing fits; a named polygon without id (60,10 40x40), a rectangle without any of
// these (110,10 40x40), a line (10,80 to 190,80).
[[nodiscard]] QByteArray smallDrawing();

// One rectangle, and two things that are not drawn as they should.
[[nodiscard]] QByteArray drawingWithWarnings();
