// SPDX-License-Identifier: MIT
#pragma once

#include <QByteArray>
#include <QString>

#include <vector>

namespace mirn::zelengine {

// One step from a JSON value to one inside it: a member of an object, or an item of an array if the key is null.
struct JsonStep
{
    QString key;
    int index = 0;
};

using JsonPath = std::vector<JsonStep>;

struct TextPosition
{
    int line = 1; // both count from 1, columns in characters
    int column = 1;
};

[[nodiscard]] TextPosition positionOfOffset(const QByteArray& utf8, int offset);

// Finds the position of a value in a text of valid JSON, which Qt's parser does not report. Each call scans the text,
// so it is meant for messages only. For a path that leads nowhere it returns the position of the last value on the way.
class JsonLocator
{
public:
    enum class Target { Value, Key };

    explicit JsonLocator(const QByteArray& utf8);

    [[nodiscard]] TextPosition locate(const JsonPath& path, Target target = Target::Value) const;

private:
    [[nodiscard]] int skipSpace(int offset) const;
    [[nodiscard]] int skipString(int offset) const;
    [[nodiscard]] int skipValue(int offset) const;
    [[nodiscard]] int nextOf(int offset) const;
    [[nodiscard]] bool findMember(const QString& key, int* keyOffset, int* valueOffset) const;
    [[nodiscard]] bool findItem(int index, int* valueOffset) const;
    [[nodiscard]] char at(int offset) const;

    QByteArray m_text;
};

} // namespace mirn::zelengine
