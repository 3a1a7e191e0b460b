// SPDX-License-Identifier: MIT
#pragma once

#include <QFile>
#include <QString>
#include <QStringList>

#include <memory>

namespace mirn::zelchip {

// The file of accepted changes since the last save: one Tcl command per line, nothing else. A line that append()
// accepted is with the operating system before it returns, so it outlives the program. Knows nothing of what the
// commands mean.
class Journal final
{
public:
    // `fileName` is a path; the file need not exist, its folder is made when the first line is written.
    explicit Journal(const QString& fileName);
    ~Journal();

    struct Content
    {
        QStringList commands;
        bool hasTornEnd = false; // the last line had no end: its writer was cut off
        QString error; // empty unless the file is there and cannot be read
    };

    // What the file holds. Commands may span lines, as a name with a line break would.
    [[nodiscard]] Content read() const;

    // Empty on success; else why the line is not in the file.
    [[nodiscard]] QString append(const QString& command);

    // An empty file. Empty on success, else why not.
    [[nodiscard]] QString clear();

    // Moves the file to a name of its own beside it and starts anew; gives that name, or nothing when it could not.
    QString setAside();

    // Cuts off an unfinished last line.
    [[nodiscard]] QString dropTornEnd();

    [[nodiscard]] const QString& fileName() const { return m_fileName; }

private:
    [[nodiscard]] QString open();
    [[nodiscard]] QString complaint(const QString& what) const;

    const QString m_fileName;
    QFile m_file;
};

} // namespace mirn::zelchip
