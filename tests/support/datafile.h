// SPDX-License-Identifier: MIT
#pragma once

#include "tests/support/files.h"

namespace zeltest {

// The content of a file that lies among the tests.
inline QByteArray dataFile(const QString& name)
{
    const QByteArray content = contentOf(ZEL_TESTS_FOLDER "/" + name);
    if (content.isEmpty())
        qFatal("cannot read %s", qPrintable(name));
    return content;
}

} // namespace zeltest
