// SPDX-License-Identifier: MIT
#include "engine/jsonreport.h"

#include <QDir>
#include <QFile>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace mirn::zelengine {

namespace {

constexpr int MAXIMUM_WARNINGS = 20;

QString reasonOf(const QJsonParseError& error)
{
    if (error.error == QJsonParseError::DeepNesting)
        return QStringLiteral("nested deeper than the 1024 levels that can be read");
    return QStringLiteral("not valid JSON: ") + error.errorString();
}

} // namespace

QJsonValue JsonReport::load(const QString& fileName)
{
    m_fileName = fileName;
    QFile file(fileName);
    if (!file.open(QIODevice::ReadOnly)) {
        m_error = QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(fileName), file.errorString());
        return QJsonValue(QJsonValue::Undefined);
    }
    m_text = file.readAll();
    QJsonParseError parseError;
    const QJsonDocument document = QJsonDocument::fromJson(m_text, &parseError);
    if (parseError.error != QJsonParseError::NoError) {
        m_error = located(positionOfOffset(m_text, parseError.offset), reasonOf(parseError));
        return QJsonValue(QJsonValue::Undefined);
    }
    return document.isArray() ? QJsonValue(document.array()) : QJsonValue(document.object());
}

void JsonReport::fail(const JsonPath& path, const QString& message)
{
    if (!isFailed())
        m_error = located(JsonLocator(m_text).locate(path), message);
}

void JsonReport::warn(const JsonPath& path, JsonLocator::Target target, const QString& message)
{
    if (m_warnings.size() < MAXIMUM_WARNINGS)
        m_warnings.append(located(JsonLocator(m_text).locate(path, target), message));
}

QString JsonReport::located(TextPosition position, const QString& message) const
{
    return QStringLiteral("%1:%2:%3: %4")
        .arg(QDir::toNativeSeparators(m_fileName), QString::number(position.line), QString::number(position.column),
            message);
}

} // namespace mirn::zelengine
