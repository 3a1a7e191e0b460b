// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/datafile.h"

#include <QDir>
#include <QTemporaryDir>

inline QByteArray smallDevice()
{
    return zeltest::dataFile("engine/small/device.json");
}

// The design file with these resources, a JSON array.
inline QByteArray designWith(const QByteArray& resources)
{
    return "{\"name\": \"top\", \"resources\":\n" + resources + "\n}\n";
}

// A project in a temporary folder. It begins as the smallest one that has everything: two neighbouring units of two
// channels and a transmit PLL each, a third unit apart, one without channels, two reference clocks, two banks of two
// supplies, and a design of these resources. Tests replace what they are about.
class ProjectFolder
{
public:
    explicit ProjectFolder(const QByteArray& resources = "[]")
        : m_folder(QDir::tempPath() + "/zel project \u00e4\u00f6-XXXXXX")
    {
        write("project.json", zeltest::dataFile("engine/small/project.json"));
        write("device.json", smallDevice());
        write("design.json", designWith(resources));
    }

    void write(const QString& fileName, const QByteArray& content)
    {
        zeltest::writeFile(m_folder.filePath(fileName), content);
    }

    [[nodiscard]] QString path() const { return m_folder.path(); }

    // A message without the folder's path in front of the file name.
    [[nodiscard]] QString withoutPath(const QString& message) const
    {
        return QString(message).remove(QDir::toNativeSeparators(m_folder.path() + '/'));
    }

private:
    QTemporaryDir m_folder;
};
