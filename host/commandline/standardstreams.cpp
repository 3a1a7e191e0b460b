// SPDX-License-Identifier: MIT
#include "host/commandline/standardstreams.h"

#include <cstdio>

namespace mirn::zelchip {

void writeToStream(const QString& text, TclInterpreter::Channel channel)
{
    FILE* const stream = channel == TclInterpreter::Channel::Error ? stderr : stdout;
    const QByteArray bytes = text.toLocal8Bit();
    std::fwrite(bytes.constData(), 1, static_cast<std::size_t>(bytes.size()), stream);
    std::fflush(stream);
}

} // namespace mirn::zelchip
