// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>
#include <QTemporaryDir>

namespace zelbench {

// A generated project without a drawing. The device has the given number of I/O supply sites, in banks of eight, and a
// quarter as many sites in SerDes units of two channels and a PLL each. The design has supplies of two voltages in
// equal numbers, and an IP of four channels with its PLL. Nothing is placed. In a drawing of many elements only every
// `pitch`th of them may be a site.
class DesignProject final
{
public:
    DesignProject(int sites, int supplies, int pitch = 1);

    [[nodiscard]] QString path() const { return m_folder.path(); }
    [[nodiscard]] QString deviceFile() const;

    // The element ids of supply sites, and the names of resources. `n` counts from 0. supplySite() is for a pitch of 1.
    [[nodiscard]] int site(int n) const { return supplySite(n * m_pitch); }
    [[nodiscard]] static int supplySite(int n);
    [[nodiscard]] static QString supply(int n);
    [[nodiscard]] static QString ip();

private:
    void write(const QString& fileName, const QByteArray& content) const;

    const int m_pitch;
    QTemporaryDir m_folder;
};

} // namespace zelbench
