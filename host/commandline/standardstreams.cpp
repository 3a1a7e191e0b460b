// SPDX-License-Identifier: MIT
#include "host/commandline/standardstreams.h"

#include <QString>
#include <QtGlobal>

#include <cstdio>

namespace mirn::zelchip {

void writeToStream(const QString& text, TclInterpreter::Channel channel)
{
    FILE* const stream = channel == TclInterpreter::Channel::Error ? stderr : stdout;
    const QByteArray bytes = text.toLocal8Bit();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
}

bool writeToOutput(const QByteArray& bytes)
{
    const auto size = static_cast<std::size_t>(bytes.size());
    return std::fwrite(bytes.constData(), 1, size, stdout) == size && std::fflush(stdout) == 0;
}

namespace {

const char* const PlatformMessages[] = {
    "QStandardPaths: XDG_RUNTIME_DIR not set",
    "This plugin does not support propagateSizeHints()",
};

QtMessageHandler previousHandler = nullptr;

void handleMessage(QtMsgType type, const QMessageLogContext& context, const QString& text)
{
    for (const char* message : PlatformMessages) {
        if (text.startsWith(QLatin1String(message)))
            return;
    }
    previousHandler(type, context, text);
}

} // namespace

void silencePlatformMessages()
{
    previousHandler = qInstallMessageHandler(handleMessage);
}

} // namespace mirn::zelchip
