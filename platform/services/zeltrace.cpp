// SPDX-License-Identifier: MIT
#include "platform/contract/zeltrace.h"

#include <QLoggingCategory>

#include <memory>
#include <utility>

namespace {

Q_LOGGING_CATEGORY(traceCategory, "zel.trace", QtWarningMsg)
Q_LOGGING_CATEGORY(debugCategory, "zel.debug", QtWarningMsg)

// Shared, so that a sink that removes itself stays alive while it runs.
std::shared_ptr<DiagTraceSink>& traceSink()
{
    static std::shared_ptr<DiagTraceSink> sink;
    return sink;
}

} // namespace

void diagTrace(const char* text, const char* function)
{
    if (const auto sink = traceSink())
        (*sink)(text, function);
    else
        qCDebug(traceCategory, "%s: %s", function, text);
}

void setDiagTraceSink(DiagTraceSink sink)
{
    traceSink() = sink ? std::make_shared<DiagTraceSink>(std::move(sink)) : nullptr;
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
    if (const auto sink = m_sink)
        (*sink)(text, mode);
    else
        qCDebug(debugCategory, "%s", text.c_str());
}

void TRQDebug::setSink(Sink sink)
{
    m_sink = sink ? std::make_shared<Sink>(std::move(sink)) : nullptr;
}
