// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

// A project in a temporary folder. It begins as the smallest one that has everything: two neighbouring units of two
// channels and a transmit PLL each, a third unit apart, two reference clocks, two banks of two supplies, and a design
// of these resources. Tests replace what they are about.
class ProjectFolder
{
public:
    explicit ProjectFolder(const QByteArray& resources = "[]");

    void write(const QString& fileName, const QByteArray& content);

    [[nodiscard]] QString path() const { return m_folder.path(); }

    // A message without the folder's path in front of the file name.
    [[nodiscard]] QString withoutPath(const QString& message) const;

private:
    QTemporaryDir m_folder;
};

// The design file with these resources, a JSON array.
[[nodiscard]] QByteArray designWith(const QByteArray& resources);
