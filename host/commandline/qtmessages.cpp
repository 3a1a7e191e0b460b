// SPDX-License-Identifier: MIT
#include "host/commandline/qtmessages.h"

#include <QString>
#include <QtGlobal>

namespace mirn::zelchip {

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
