// SPDX-License-Identifier: MIT
#include "engine/input/jsonnode.h"

#include "engine/input/inputfile.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>
#include <utility>

namespace mirn::zelengine {

JsonNode::JsonNode(const QJsonValue& root, JsonReport& report)
    : JsonNode(root, &report, nullptr)
{ }

JsonNode::JsonNode(const QJsonValue& value, JsonReport* report, std::shared_ptr<const Link> link)
    : m_value(value)
    , m_report(report)
    , m_link(std::move(link))
{ }

int JsonNode::size() const
{
    return static_cast<int>(m_value.toArray().size());
}

JsonNode JsonNode::member(const QString& key) const
{
    return {m_value.toObject().value(key), m_report, std::make_shared<Link>(Link{m_link, {key, 0}})};
}

JsonNode JsonNode::item(int index) const
{
    return {m_value.toArray().at(index), m_report, std::make_shared<Link>(Link{m_link, {QString(), index}})};
}

QStringList JsonNode::keys() const
{
    return m_value.toObject().keys();
}

void JsonNode::expectObject(const QStringList& knownKeys) const
{
    if (!m_value.isObject()) {
        failExpected("an object");
        return;
    }
    const QStringList present = keys();
    for (const QString& key : present) {
        if (!knownKeys.contains(key))
            member(key).warnAboutKey(
                QStringLiteral("unknown key \"%1\" is ignored, known are %2").arg(key, quotedAlternatives(knownKeys)));
    }
}

void JsonNode::expectMap() const
{
    if (exists() && !m_value.isObject())
        failExpected("an object");
}

void JsonNode::expectArray() const
{
    if (exists() && !m_value.isArray())
        failExpected("an array");
}

QString JsonNode::text() const
{
    if (!m_value.isString())
        failExpected("a text");
    return m_value.toString();
}

bool JsonNode::boolean() const
{
    if (!m_value.isBool())
        failExpected("true or false");
    return m_value.toBool();
}

int JsonNode::number(int minimum, int maximum) const
{
    const double value = m_value.toDouble(minimum - 1.0);
    const int whole = value >= minimum && value <= maximum ? static_cast<int>(value) : minimum;
    if (!m_value.isDouble() || whole != value) // NOLINT: exact comparison intended
        fail(QStringLiteral("expected a whole number from %1 to %2")
                 .arg(QString::number(minimum), QString::number(maximum)));
    return whole;
}

double JsonNode::real() const
{
    if (!m_value.isDouble())
        failExpected("a number");
    return m_value.toDouble();
}

QStringList JsonNode::texts() const
{
    QStringList result;
    expectArray();
    for (int i = 0; i < size(); ++i)
        result.append(item(i).text());
    return result;
}

QString JsonNode::requiredText(const QString& key) const
{
    const JsonNode node = member(key);
    if (!node.exists()) {
        fail(QStringLiteral("\"%1\" is missing, expected a text").arg(key));
        return {};
    }
    const QString text = node.text();
    if (text.isEmpty())
        node.fail(QStringLiteral("\"%1\" must not be empty").arg(key));
    return text;
}

int JsonNode::requiredNumber(const QString& key, int minimum, int maximum) const
{
    const JsonNode node = member(key);
    if (node.exists())
        return node.number(minimum, maximum);
    fail(QStringLiteral("\"%1\" is missing, expected a whole number").arg(key));
    return minimum;
}

QString JsonNode::optionalText(const QString& key, const QString& fallback) const
{
    const JsonNode node = member(key);
    return node.exists() ? node.text() : fallback;
}

void JsonNode::fail(const QString& message) const
{
    if (!m_report->isFailed())
        m_report->fail(path(), message);
}

QString JsonNode::inputFile(const QDir& folder) const
{
    const QString name = text();
    const QString file = folder.absoluteFilePath(name);
    const QString error = name.isEmpty() ? QString() : inputFileError(file, LargestJsonFile);
    if (!error.isEmpty())
        fail(QStringLiteral("\"%1\" cannot be read: %2").arg(name, error));
    return file;
}

void JsonNode::warn(const QString& message) const
{
    m_report->warn(path(), JsonLocator::Target::Value, message);
}

void JsonNode::warnAboutKey(const QString& message) const
{
    m_report->warn(path(), JsonLocator::Target::Key, message);
}

void JsonNode::failExpected(const char* what) const
{
    fail(QStringLiteral("expected %1").arg(QLatin1String(what)));
}

JsonPath JsonNode::path() const
{
    JsonPath result;
    for (const Link* link = m_link.get(); link; link = link->parent.get())
        result.push_back(link->step);
    std::reverse(result.begin(), result.end());
    return result;
}

QString quotedAlternatives(const QStringList& texts)
{
    if (texts.isEmpty())
        return QStringLiteral("none");
    QString result;
    for (int i = 0; i < texts.size(); ++i) {
        if (i > 0)
            result += i == texts.size() - 1 ? QStringLiteral(" or ") : QStringLiteral(", ");
        result += QLatin1Char('"') + texts.at(i) + QLatin1Char('"');
    }
    return result;
}

} // namespace mirn::zelengine
