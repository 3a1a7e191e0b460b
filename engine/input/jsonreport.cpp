// SPDX-License-Identifier: MIT
#include "engine/input/jsonreport.h"

#include "engine/input/inputfile.h"
#include "engine/input/shortvalues.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace mirn::zelengine {

namespace {

constexpr int MaximumWarnings = 20;

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
    QString reason;
    const std::optional<QByteArray> text = readInputFile(fileName, LargestJsonFile, &reason);
    if (!text) {
        m_error = QStringLiteral("%1: %2").arg(QDir::toNativeSeparators(fileName), reason);
        return QJsonValue(QJsonValue::Undefined);
    }
    m_text = *text;
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
        m_error = located(path, message);
}

void JsonReport::warn(const JsonPath& path, JsonLocator::Target target, const QString& message)
{
    if (m_warnings.size() < MaximumWarnings)
        m_warnings.append(located(JsonLocator(m_text).locate(path, target), message));
}

void JsonReport::failOf(const QString& located)
{
    if (!isFailed())
        m_error = located;
}

void JsonReport::warnOf(const QString& located)
{
    if (m_warnings.size() < MaximumWarnings)
        m_warnings.append(located);
}

QString JsonReport::located(const JsonPath& path, const QString& message) const
{
    return located(JsonLocator(m_text).locate(path), message);
}

QString JsonReport::located(TextPosition position, const QString& message) const
{
    return QStringLiteral("%1:%2:%3: %4")
        .arg(QDir::toNativeSeparators(m_fileName), QString::number(position.line), QString::number(position.column),
            withShortValues(message));
}

} // namespace mirn::zelengine
