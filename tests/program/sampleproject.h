// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/files.h"

#include <QDir>
#include <QTemporaryDir>

// A copy of the sample project in a temporary folder, for a program that changes it. Scripts and whatever else a test
// writes lie beside it.
class SampleProject
{
public:
    explicit SampleProject(const QString& where = QDir::tempPath())
        : m_folder(where + "/zelchip-XXXXXX")
    {
        const QDir sample(ZEL_SAMPLE_FOLDER);
        QDir().mkpath(path());
        for (const QString& name : sample.entryList(QDir::Files)) {
            if (!QFile::copy(sample.filePath(name), path() + '/' + name))
                qFatal("cannot copy %s", qPrintable(name));
        }
    }

    [[nodiscard]] QString path() const { return m_folder.filePath("project"); }
    [[nodiscard]] QString implementation() const { return path() + "/impl1"; }
    [[nodiscard]] QString journalFile() const { return implementation() + "/journal.tcl"; }

    // The path of a file beside the project.
    [[nodiscard]] QString file(const QString& name) const { return m_folder.filePath(name); }
    QString write(const QString& name, const QByteArray& content) const
    {
        return zeltest::writeFile(file(name), content);
    }

    // The journal's lines without the comments at its top.
    [[nodiscard]] QByteArrayList journal() const
    {
        QByteArrayList commands;
        for (const QByteArray& line : zeltest::contentOf(journalFile()).split('\n')) {
            if (!line.isEmpty() && !line.startsWith('#'))
                commands.append(line);
        }
        return commands;
    }

    // Brings the project to the state in which no program has ever opened it.
    void forgetWork() const
    {
        QDir(implementation()).removeRecursively();
        QFile::remove(implementation());
    }

private:
    QTemporaryDir m_folder;
};
