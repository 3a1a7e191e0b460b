// SPDX-License-Identifier: MIT
#include "platform/contract/zeltrace.h"

#include <QLoggingCategory>

#include <utility>

namespace {

Q_LOGGING_CATEGORY(traceCategory, "zel.trace", QtWarningMsg)
Q_LOGGING_CATEGORY(debugCategory, "zel.debug", QtWarningMsg)

DiagTraceSink& traceSink()
{
    static DiagTraceSink sink;
    return sink;
}

} // namespace

void diagTrace(const char* text, const char* function)
{
    if (traceSink())
        traceSink()(text, function);
    else
        qCDebug(traceCategory, "%s: %s", function, text);
}

void setDiagTraceSink(DiagTraceSink sink)
{
    traceSink() = std::move(sink);
}

bool isDiagTraceEnabled()
{
    return traceSink() || traceCategory().isDebugEnabled();
}

TRQDebug::TRQDebug() = default;

TRQDebug* TRQDebug::getInstance()
{
    static TRQDebug debug;
    return &debug;
}

void TRQDebug::trqDebugOut(std::string text, std::string mode)
{
    if (m_sink)
        m_sink(text, mode);
    else
        qCDebug(debugCategory, "%s", text.c_str());
}

void TRQDebug::setSink(Sink sink)
{
    m_sink = std::move(sink);
}
