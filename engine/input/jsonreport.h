// SPDX-License-Identifier: MIT
#pragma once

#include "engine/input/jsonlocator.h"

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QStringList>

namespace mirn::zelengine {

// The text of one JSON file being read and the messages about it. The reader of the file owns it. It keeps the first
// error, because later ones are mostly its consequences, and the first 20 warnings. Each message begins with
// "file:line:column: ", and long values in it are shortened.
class JsonReport
{
public:
    // Reads and parses a file. On failure the value is undefined and the report failed.
    [[nodiscard]] QJsonValue load(const QString& fileName);

    void fail(const JsonPath& path, const QString& message);
    void warn(const JsonPath& path, JsonLocator::Target target, const QString& message);

    // For messages about another file, which the text names; they have their position already.
    void failOf(const QString& located);
    void warnOf(const QString& located);

    // Returns a message with its position in front, as errors have it.
    [[nodiscard]] QString located(const JsonPath& path, const QString& message) const;

    [[nodiscard]] bool isFailed() const { return !m_error.isEmpty(); }
    [[nodiscard]] const QString& error() const { return m_error; }
    [[nodiscard]] const QStringList& warnings() const { return m_warnings; }
    [[nodiscard]] const QString& fileName() const { return m_fileName; }

private:
    [[nodiscard]] QString located(TextPosition position, const QString& message) const;

    QString m_fileName;
    QByteArray m_text;
    QString m_error;
    QStringList m_warnings;
};

} // namespace mirn::zelengine
