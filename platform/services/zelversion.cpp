// SPDX-License-Identifier: MIT
#include "platform/contract/zelversion.h"

const char* zelchipguiVersion()
{
    return ZELCHIPGUI_VERSION_STRING;
}
