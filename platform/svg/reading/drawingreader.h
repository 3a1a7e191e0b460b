// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/bytesource.h"
#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/limits.h"
#include "platform/svg/records/drawing.h"
#include "platform/svg/xml/xmlreading.h"

namespace zelsvg {

// Reads a drawing into records. After an error, which the diagnostics then have, `drawing` holds what came before it.
// The quick way is tried first and makes no difference but to the time it takes; `reading` can do without it.
void readDrawing(DrawingSource& source, Diagnostics& diagnostics, const Limits& limits, Drawing& drawing,
    XmlReading reading = XmlReading::Quick);

} // namespace zelsvg
