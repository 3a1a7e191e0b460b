// SPDX-License-Identifier: MIT
#include "engine/project.h"

#include "engine/input/jsonnode.h"

#include <QDir>
#include <QFileInfo>

#include <algorithm>

namespace mirn::zelengine {

namespace {

Implementation readImplementation(const JsonNode& node, const QDir& folder, const Project& project)
{
    node.expectObject({QStringLiteral("name"), QStringLiteral("directory")});
    const QString name = node.requiredText(QStringLiteral("name"));
    if (project.implementation(name))
        node.member(QStringLiteral("name")).fail(QStringLiteral("the implementation \"%1\" is there twice").arg(name));
    return {name, QDir::cleanPath(folder.absoluteFilePath(node.optionalText(QStringLiteral("directory"), name)))};
}

void readImplementations(const JsonNode& root, const QDir& folder, Project& project)
{
    const JsonNode list = root.member(QStringLiteral("implementations"));
    list.expectArray();
    QStringList names;
    for (int i = 0; i < list.size(); ++i) {
        project.implementations.push_back(readImplementation(list.item(i), folder, project));
        names.append(project.implementations.back().name);
    }
    project.defaultImplementation
        = root.optionalText(QStringLiteral("defaultImplementation"), names.isEmpty() ? QString() : names.first());
    if (!project.defaultImplementation.isEmpty() && !names.contains(project.defaultImplementation))
        root.member(QStringLiteral("defaultImplementation"))
            .fail(QStringLiteral("there is no implementation \"%1\", expected %2")
                      .arg(project.defaultImplementation, quotedAlternatives(names)));
}

Project readRoot(const JsonNode& root, const QDir& folder)
{
    root.expectObject(
        {QStringLiteral("$schema"), QStringLiteral("name"), QStringLiteral("flow"), QStringLiteral("device"),
            QStringLiteral("design"), QStringLiteral("implementations"), QStringLiteral("defaultImplementation")});
    Project project;
    project.directory = folder.absolutePath();
    project.name = root.requiredText(QStringLiteral("name"));
    project.flow = root.optionalText(QStringLiteral("flow"));
    const QString device = root.requiredText(QStringLiteral("device"));
    const QString design = root.optionalText(QStringLiteral("design"));
    readImplementations(root, folder, project);
    if (!device.isEmpty())
        project.deviceFile = root.member(QStringLiteral("device")).inputFile(folder);
    if (!design.isEmpty())
        project.designFile = root.member(QStringLiteral("design")).inputFile(folder);
    return project;
}

} // namespace

const Implementation* Project::implementation(const QString& implementationName) const
{
    const auto it = std::find_if(implementations.begin(), implementations.end(),
        [&](const Implementation& candidate) { return candidate.name == implementationName; });
    return it == implementations.end() ? nullptr : &*it;
}

std::optional<Project> readProject(const QString& directory, QString* error, QStringList* warnings)
{
    if (!QFileInfo(directory).isDir()) {
        *error = QStringLiteral("%1: there is no such folder").arg(QDir::toNativeSeparators(directory));
        return std::nullopt;
    }
    const QDir folder(QDir::cleanPath(QFileInfo(directory).absoluteFilePath()));
    JsonReport report;
    const QJsonValue root = report.load(folder.filePath(QStringLiteral("project.json")));
    std::optional<Project> project;
    if (!report.isFailed())
        project = readRoot(JsonNode(root, report), folder);
    warnings->append(report.warnings());
    if (!report.isFailed())
        return project;
    *error = report.error();
    return std::nullopt;
}

} // namespace mirn::zelengine
