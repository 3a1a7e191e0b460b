// SPDX-License-Identifier: MIT
#pragma once

#include "host/projectsession.h"

#include <memory>

// Of a project or drawing with which nothing is wrong.
inline std::unique_ptr<mirn::zelchip::ProjectSession> openSession(const QString& path)
{
    QString error;
    auto session = mirn::zelchip::ProjectSession::open(path, &error);
    if (!session)
        qFatal("%s", qPrintable(error));
    return session;
}
