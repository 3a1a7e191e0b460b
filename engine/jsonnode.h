// SPDX-License-Identifier: MIT
#pragma once

#include "engine/jsonreport.h"

#include <QDir>
#include <QJsonValue>
#include <QString>
#include <QStringList>

#include <memory>

namespace mirn::zelengine {

// One value of a JSON file together with the way to it, so that whatever is wrong with it can be reported where it
// stands. Reading never stops at an error: it gives an empty value and leaves the error in the report, which the reader
// looks at when it is through with a record. The report must outlive its nodes.
class JsonNode
{
public:
    JsonNode(const QJsonValue& root, JsonReport& report);

    [[nodiscard]] bool exists() const { return !m_value.isUndefined(); }
    [[nodiscard]] int size() const; // of an array; else 0

    [[nodiscard]] JsonNode member(const QString& key) const;
    [[nodiscard]] JsonNode item(int index) const;
    [[nodiscard]] QStringList keys() const;

    // Fails unless this is an object; warns of members that are not among the known ones.
    void expectObject(const QStringList& knownKeys) const;
    // An object with any keys; one that is absent counts as empty.
    void expectMap() const;
    // An array; one that is absent counts as empty.
    void expectArray() const;

    [[nodiscard]] QString text() const;
    [[nodiscard]] bool boolean() const;
    [[nodiscard]] int number(int minimum, int maximum) const;
    [[nodiscard]] double real() const;
    [[nodiscard]] QStringList texts() const; // an array of texts; absent: empty

    // A member that must be there and not empty.
    [[nodiscard]] QString requiredText(const QString& key) const;
    [[nodiscard]] int requiredNumber(const QString& key, int minimum, int maximum) const;
    // A member that may be missing.
    [[nodiscard]] QString optionalText(const QString& key, const QString& fallback = {}) const;

    void fail(const QString& message) const;
    // The message with the value's place in front, for someone else to report.
    [[nodiscard]] QString located(const QString& message) const { return m_report->located(path(), message); }
    // Of a text that names a file in a folder: its absolute path. Fails when that file cannot be read.
    [[nodiscard]] QString inputFile(const QDir& folder) const;
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

// "a", "b" or "c": for messages that say what was expected.
[[nodiscard]] QString quotedAlternatives(const QStringList& texts);

} // namespace mirn::zelengine
