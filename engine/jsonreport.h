// SPDX-License-Identifier: MIT
#pragma once

#include "engine/jsonlocator.h"

#include <QByteArray>
#include <QJsonValue>
#include <QString>
#include <QStringList>

namespace mirn::zelengine {

// One JSON file being read: its text, and what there is to say about it. Of the errors the first is kept, as those
// after it are mostly its consequences; of the warnings as many as anyone reads. Each begins "file:line:column: "
// and shortens long values.
class JsonReport
{
public:
    // Reads and parses; the value is undefined and the report failed when that cannot be done.
    [[nodiscard]] QJsonValue load(const QString& fileName);

    void fail(const JsonPath& path, const QString& message);
    void warn(const JsonPath& path, JsonLocator::Target target, const QString& message);

    // A message with its place in front, as an error has it.
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
