// SPDX-License-Identifier: MIT
#pragma once

#include "engine/input/jsonreport.h"

#include <QDir>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <memory>

namespace mirn::zelengine {

// One value of a JSON file together with its path, so that an error in it can be reported with its position. Reading
// never stops at an error: it returns a default value and leaves the error in the report, which the caller checks after
// each record. The report must outlive its nodes.
class JsonNode
{
public:
    JsonNode(const QJsonValue& root, JsonReport& report);

    [[nodiscard]] bool exists() const { return !m_value.isUndefined(); }
    [[nodiscard]] bool isText() const { return m_value.isString(); }
    [[nodiscard]] int size() const; // number of items of an array; 0 for anything else

    [[nodiscard]] JsonNode member(const QString& key) const;
    [[nodiscard]] JsonNode item(int index) const;
    [[nodiscard]] QStringList keys() const;

    // Fails unless this is an object; warns about unknown members.
    void expectObject(const QStringList& knownKeys) const;
    // Fails unless this is an object or absent.
    void expectMap() const;
    // Fails unless this is an array or absent.
    void expectArray() const;

    [[nodiscard]] QString text() const;
    [[nodiscard]] bool boolean() const;
    [[nodiscard]] int number(int minimum, int maximum) const;
    [[nodiscard]] double real() const;
    [[nodiscard]] QStringList texts() const; // an array of texts; empty if absent

    // Fail if the member is missing; requiredText() also fails if it is empty.
    [[nodiscard]] QString requiredText(const QString& key) const;
    [[nodiscard]] int requiredNumber(const QString& key, int minimum, int maximum) const;
    // Returns the fallback if the member is missing.
    [[nodiscard]] QString optionalText(const QString& key, const QString& fallback = {}) const;

    void fail(const QString& message) const;
    // Returns the message with the value's position in front, for someone else to report.
    [[nodiscard]] QString located(const QString& message) const { return m_report->located(path(), message); }
    // Returns the absolute path of the file in the folder that this text names. Fails if that file cannot be read.
    [[nodiscard]] QString inputFile(const QDir& folder) const;
    void warn(const QString& message) const;
    void warnAboutKey(const QString& message) const;

private:
    struct Link
    {
        std::shared_ptr<const Link> parent;
        JsonStep step;
    };

    JsonNode(const QJsonValue& value, JsonReport* report, std::shared_ptr<const Link> link);
    [[nodiscard]] JsonPath path() const;
    void failExpected(const char* what) const;

    QJsonValue m_value;
    JsonReport* m_report;
    std::shared_ptr<const Link> m_link;
};

// Returns, for example, '"a", "b" or "c"', for messages that say what was expected.
[[nodiscard]] QString quotedAlternatives(const QStringList& texts);

} // namespace mirn::zelengine
