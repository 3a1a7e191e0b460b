// SPDX-License-Identifier: MIT
#include "engine/input/jsonreport.h"

#include "engine/input/inputfile.h"

#include <QDir>
#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

namespace mirn::zelengine {

namespace {

constexpr int MaximumWarnings = 20;
constexpr int MaximumValueLength = 80; // characters of a quoted value in a message
constexpr int MaximumMessageLength = 1000;

// A value may be as long as the file, and so may the list of what is expected.
QString withShortValues(const QString& message)
{
    QStringList parts = message.split(QLatin1Char('"'));
    for (int i = 1; i < parts.size(); i += 2) {
        if (parts.at(i).size() > MaximumValueLength)
            parts[i] = parts.at(i).left(MaximumValueLength) + QStringLiteral("...");
    }
    const QString result = parts.join(QLatin1Char('"'));
    // The reason is at the beginning or at the end of the message, so the middle can go.
    return result.size() <= MaximumMessageLength
        ? result
        : result.left(MaximumMessageLength / 2) + QStringLiteral("...") + result.right(MaximumMessageLength / 2);
}

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
