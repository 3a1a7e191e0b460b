// SPDX-License-Identifier: MIT
#include "engine/model/resourcename.h"

namespace mirn::zelengine {

namespace {

bool isControl(ushort c)
{
    return c < 0x20 || (c >= 0x7F && c < 0xA0);
}

} // namespace

QString textError(const QString& text)
{
    for (int i = 0; i < text.size(); ++i) {
        const QChar c = text.at(i);
        if (isControl(c.unicode()))
            return QStringLiteral("the name holds a control character");
        if (c.unicode() <= 0xFF)
            continue;
        // Characters beyond U+FFFF are two QChars.
        const int length = c.isHighSurrogate() ? 2 : 1;
        return QStringLiteral("the name holds \"%1\", which is not in ISO 8859-1").arg(text.mid(i, length));
    }
    return {};
}

// Between braces Tcl substitutes nothing but a backslash at the end of a line, and does not count a brace after a
// backslash. So the other braces must be balanced, and a name must not end in a backslash that would escape the closing
// brace (or the slash of the path).
QString resourceNameError(const QString& name)
{
    if (name.isEmpty())
        return QStringLiteral("the name is empty");
    if (name.contains(QLatin1Char('/')))
        return QStringLiteral("the name holds \"/\", which separates names");
    int depth = 0;
    bool escaped = false;
    for (const QChar c : name) {
        if (!escaped && c == QLatin1Char('{'))
            ++depth;
        else if (!escaped && c == QLatin1Char('}') && --depth < 0)
            break;
        escaped = !escaped && c == QLatin1Char('\\');
    }
    if (depth != 0)
        return QStringLiteral("the braces in the name do not pair up");
    if (escaped)
        return QStringLiteral("the name ends in a backslash");
    return textError(name);
}

} // namespace mirn::zelengine
