// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zeltext.h"

#include <QString>

#include <string>

namespace mirn::zelengine {

// What a question to the engine names: functions that all its answers share.

inline QString noSuchResource(const QString& name)
{
    return QStringLiteral("there is no resource \"%1\"").arg(name);
}

// Returns -1 for a text that is not an element id.
inline int elementId(const std::string& text)
{
    bool ok = false;
    const int id = fromEngineText(text).toInt(&ok);
    return ok ? id : -1;
}

} // namespace mirn::zelengine
