// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace zelbench {

// A generated project without a drawing: a device with as many I/O supply sites as asked for, in banks of eight, and a
// quarter as many sites in SerDes units of two channels and a PLL each; a design with supplies of two voltages, the
// same number each, and an IP of four channels with its PLL. Nothing is placed.
class DesignProject final
{
public:
    DesignProject(int sites, int supplies);

    [[nodiscard]] QString path() const { return m_folder.path(); }
    [[nodiscard]] QString deviceFile() const;

    // Element ids of supply sites, and names of resources; both count from 0.
    [[nodiscard]] static int supplySite(int n);
    [[nodiscard]] static QString supply(int n);
    [[nodiscard]] static QString ip();

private:
    void write(const QString& fileName, const QByteArray& content) const;

    QTemporaryDir m_folder;
};

} // namespace zelbench
