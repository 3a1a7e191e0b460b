// SPDX-License-Identifier: MIT
#pragma once

#include "platform/svg/diagnostics.h"
#include "platform/svg/drawing.h"
#include "platform/svg/limits.h"
#include "platform/svg/tagreader.h"
#include "platform/svg/xmlhandler.h"

namespace zelsvg {

// A source that can be read again from its begin.
class DrawingSource : public ByteSource
{
public:
    virtual bool rewind() = 0;

    // Asked between steps of the work on what has been read, `share` of which is done. False when nobody waits for it
    // any more; reading then fails as well.
    virtual bool isWanted(double share) = 0;
};

// Reads a drawing into records. After an error, which the diagnostics then have, `drawing` holds what came before it.
// The quick way is tried first and makes no difference but to the time it takes; `reading` can do without it.
void readDrawing(DrawingSource& source, Diagnostics& diagnostics, const Limits& limits, Drawing& drawing,
    XmlReading reading = XmlReading::Quick);

} // namespace zelsvg
