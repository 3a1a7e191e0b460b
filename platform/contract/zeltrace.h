// SPDX-License-Identifier: MIT
#pragma once

#include "platform/contract/zelexport.h"

#include <functional>
#include <memory>
#include <string>

// Writes one trace line: `text`, and the name of the operation that it belongs to (8-bit, neither null). The line goes
// to the sink, by default the logging category "zel.trace", which is off unless the host's logging rules turn it on.
ZELPLATFORM_EXPORT void diagTrace(const char* text, const char* function);

using DiagTraceSink = std::function<void(const char* text, const char* function)>;

// A null sink restores the default. A sink may set another one while it runs.
ZELPLATFORM_EXPORT void setDiagTraceSink(DiagTraceSink sink);

// Returns true if a line would reach anyone; if not, callers may skip formatting.
[[nodiscard]] ZELPLATFORM_EXPORT bool isDiagTraceEnabled();

// The debug log of the process, created on first use.
class ZELPLATFORM_EXPORT TRQDebug
{
public:
    // Never returns null.
    static TRQDebug* getInstance();

    // Writes one line; `mode` is the file mode a writing sink would use ("a" appends).
    void trqDebugOut(std::string text, std::string mode);

    // By default lines go to the logging category "zel.debug"; a null sink restores that. A sink may
    // set another one while it runs.
    using Sink = std::function<void(const std::string& text, const std::string& mode)>;
    void setSink(Sink sink);

private:
    TRQDebug();

    std::shared_ptr<Sink> m_sink; // shared, so that a running sink stays alive
};
