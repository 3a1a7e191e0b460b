// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QDir>
#include <QString>
#include <QTemporaryDir>

// A copy of the sample project in a temporary folder, for a program that changes it. Scripts and whatever else a test
// writes lie beside it.
class SampleProject
{
public:
    explicit SampleProject(const QString& where = QDir::tempPath());

    [[nodiscard]] QString path() const { return m_folder.filePath(QStringLiteral("project")); }
    [[nodiscard]] QString implementation() const { return path() + QStringLiteral("/impl1"); }
    [[nodiscard]] QString journalFile() const { return implementation() + QStringLiteral("/journal.tcl"); }

    // Beside the project.
    [[nodiscard]] QString file(const QString& name) const { return m_folder.filePath(name); }
    QString write(const QString& name, const QByteArray& content) const;

    // Without the comments at its top.
    [[nodiscard]] QByteArrayList journal() const;

    // As if no program had ever opened it.
    void forgetWork() const;

private:
    QTemporaryDir m_folder;
};

// Empty where the file cannot be read.
[[nodiscard]] QByteArray contentOf(const QString& fileName);
