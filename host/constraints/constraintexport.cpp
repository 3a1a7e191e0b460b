// SPDX-License-Identifier: MIT
#include "host/constraints/constraintexport.h"

#include "engine/input/inputfile.h"
#include "engine/input/jsonnode.h"
#include "host/constraints/constraintwriter.h"
#include "host/constraints/templateparser.h"
#include "host/design/filereplacement.h"
#include "host/tcl/translation.h"

#include <QCoreApplication>
#include <QDir>
#include <QFileInfo>

namespace mirn::zelchip {

namespace {

const char TemplateFolder[] = "/" ZELCHIP_DATA_FOLDER "/templates"; // relative to the program's folder
const QString TemplateSuffix = QStringLiteral(".template");
constexpr qint64 LargestTemplate = qint64(1) << 20; // bytes

QString templateFolder()
{
    return QDir::cleanPath(QCoreApplication::applicationDirPath() + QLatin1String(TemplateFolder));
}

} // namespace

QStringList templateNames()
{
    QStringList names = QDir(templateFolder()).entryList({QLatin1Char('*') + TemplateSuffix}, QDir::Files, QDir::Name);
    for (QString& name : names)
        name.chop(TemplateSuffix.size());
    return names;
}

QString templateFile(const QString& nameOrFile)
{
    const bool isName = templateNames().contains(nameOrFile);
    return isName ? templateFolder() + QLatin1Char('/') + nameOrFile + TemplateSuffix : nameOrFile;
}

std::optional<QByteArray> constraintsOf(
    const zelengine::ReferenceEngine& engine, const QString& templateNameOrFile, QString* error)
{
    const QString file = templateFile(templateNameOrFile);
    if (!QFileInfo::exists(file)) {
        *error = tr("there is no template \"%1\", expected %2 or a file")
                     .arg(templateNameOrFile, zelengine::quotedAlternatives(templateNames()));
        return std::nullopt;
    }
    const std::optional<QByteArray> content = zelengine::readInputFile(file, LargestTemplate, error);
    if (!content) {
        *error = QStringLiteral("%1: %2").arg(file, *error);
        return std::nullopt;
    }
    const std::optional<ExportTemplate> format = parseTemplate(file, *content, error);
    return format ? ConstraintWriter(*format, engine).write(error) : std::nullopt;
}

QString exportConstraints(
    const zelengine::ReferenceEngine& engine, const QString& templateNameOrFile, const QString& fileName)
{
    QString error;
    const std::optional<QByteArray> constraints = constraintsOf(engine, templateNameOrFile, &error);
    if (!constraints)
        return error;
    const QFileInfo present(fileName);
    if (present.exists() && !present.isFile())
        return tr("%1: expected a file or a new name").arg(fileName);
    const FileReplacement written = replaceFile(fileName, *constraints);
    return written.error.isEmpty() ? QString() : QStringLiteral("%1: %2").arg(fileName, written.error);
}

} // namespace mirn::zelchip
