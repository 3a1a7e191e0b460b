// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/base/bytesource.h"
#include "platform/svg/base/diagnostics.h"
#include "platform/svg/base/limits.h"
#include "platform/svg/records/drawing.h"
#include "platform/svg/xml/xmlreading.h"

namespace mirn::zelsvg {

// Reads a drawing into records. After an error, which is in the diagnostics, `drawing` holds the records before it. The
// quick XML reader is tried first; apart from the time it makes no difference. `reading` can skip it.
void readDrawing(DrawingSource& source, Diagnostics& diagnostics, const Limits& limits, Drawing& drawing,
    XmlReading reading = XmlReading::Quick);

} // namespace mirn::zelsvg
