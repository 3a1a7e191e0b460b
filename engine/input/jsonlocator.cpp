// SPDX-License-Identifier: MIT
#include "engine/input/jsonlocator.h"

#include <QJsonArray>
#include <QJsonDocument>

#include <cstring>

namespace mirn::zelengine {

TextPosition positionOfOffset(const QByteArray& utf8, int offset)
{
    TextPosition position;
    for (int i = 0; i < offset && i < utf8.size(); ++i) {
        const auto byte = static_cast<unsigned char>(utf8.at(i));
        if (byte == '\n') {
            ++position.line;
            position.column = 1;
        } else if ((byte & 0xC0) != 0x80) { // continuation bytes belong to the character before
            ++position.column;
        }
    }
    return position;
}

JsonLocator::JsonLocator(const QByteArray& utf8)
    : m_text(utf8)
{ }

TextPosition JsonLocator::locate(const JsonPath& path, Target target) const
{
    int keyOffset = skipSpace(0);
    int valueOffset = keyOffset;
    for (const JsonStep& step : path) {
        const bool found
            = step.key.isNull() ? findItem(step.index, &valueOffset) : findMember(step.key, &keyOffset, &valueOffset);
        if (!found)
            return positionOfOffset(m_text, valueOffset);
    }
    return positionOfOffset(m_text, target == Target::Key ? keyOffset : valueOffset);
}

char JsonLocator::at(int offset) const
{
    return offset < m_text.size() ? m_text.at(offset) : '\0';
}

int JsonLocator::skipSpace(int offset) const
{
    if (offset == 0 && m_text.startsWith("\xEF\xBB\xBF"))
        offset = 3;
    while (offset < m_text.size() && std::strchr(" \t\r\n", m_text.at(offset)))
        ++offset;
    return offset;
}

// Skips from the opening quote past the closing one.
int JsonLocator::skipString(int offset) const
{
    ++offset;
    while (offset < m_text.size() && m_text.at(offset) != '"')
        offset += m_text.at(offset) == '\\' ? 2 : 1;
    return offset + 1;
}

// Counts brackets instead of recursing, so that deep nesting needs no stack.
int JsonLocator::skipValue(int offset) const
{
    int depth = 0;
    while (offset < m_text.size()) {
        const char c = m_text.at(offset);
        if (c == '"') {
            offset = skipString(offset);
            if (depth == 0)
                return offset;
            continue;
        }
        if (depth == 0 && std::strchr(",]} \t\r\n", c))
            return offset;
        ++offset;
        if (c == '{' || c == '[')
            ++depth;
        else if ((c == '}' || c == ']') && --depth == 0)
            return offset;
    }
    return offset;
}

// Skips from the end of a value to the next value of the same object or array, or to the closing bracket.
int JsonLocator::nextOf(int offset) const
{
    offset = skipSpace(offset);
    return at(offset) == ',' ? skipSpace(offset + 1) : offset;
}

// The last of several members with the same key counts, as in Qt's parser.
bool JsonLocator::findMember(const QString& key, int* keyOffset, int* valueOffset) const
{
    if (at(*valueOffset) != '{')
        return false;
    bool found = false;
    int offset = skipSpace(*valueOffset + 1);
    while (at(offset) == '"') {
        const int end = skipString(offset);
        const QByteArray quoted = '[' + m_text.mid(offset, end - offset) + ']';
        const int value = skipSpace(skipSpace(end) + 1); // after the colon
        if (QJsonDocument::fromJson(quoted).array().at(0).toString() == key) {
            *keyOffset = offset;
            *valueOffset = value;
            found = true;
        }
        offset = nextOf(skipValue(value));
    }
    return found;
}

bool JsonLocator::findItem(int index, int* valueOffset) const
{
    if (at(*valueOffset) != '[')
        return false;
    int offset = skipSpace(*valueOffset + 1);
    for (int i = 0; i < index && at(offset) != ']' && at(offset) != '\0'; ++i)
        offset = nextOf(skipValue(offset));
    *valueOffset = offset;
    return true;
}

} // namespace mirn::zelengine
