// SPDX-License-Identifier: MIT
#include "tests/program/sampleproject.h"

#include <QFile>

SampleProject::SampleProject(const QString& where)
    : m_folder(where + QStringLiteral("/zelchip-XXXXXX"))
{
    const QDir sample(QStringLiteral(ZEL_SAMPLE_FOLDER));
    QDir().mkpath(path());
    const QStringList names = sample.entryList(QDir::Files);
    for (const QString& name : names) {
        if (!QFile::copy(sample.filePath(name), path() + QLatin1Char('/') + name))
            qFatal("cannot copy %s", qPrintable(name));
    }
}

QString SampleProject::write(const QString& name, const QByteArray& content) const
{
    QFile target(file(name));
    if (!target.open(QIODevice::WriteOnly) || target.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(target.fileName()));
    return target.fileName();
}

QByteArrayList SampleProject::journal() const
{
    QByteArrayList commands;
    const QByteArrayList lines = contentOf(journalFile()).split('\n');
    for (const QByteArray& line : lines) {
        if (!line.isEmpty() && !line.startsWith('#'))
            commands.append(line);
    }
    return commands;
}

void SampleProject::forgetWork() const
{
    QDir(implementation()).removeRecursively();
    QFile::remove(implementation());
}

QByteArray contentOf(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}
