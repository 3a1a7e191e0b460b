// SPDX-License-Identifier: MIT
#pragma once

#include <QStringList>

namespace zeltest {

// What belongs to the whole process and so to its program alone, one line each: locale, environment, working directory,
// signal handlers, threads, the application object with its look and attributes, settings written to the home folder.
[[nodiscard]] QStringList processState();

// The lines of libzel* in the process's memory map.
[[nodiscard]] QStringList loadedLibraries();

} // namespace zeltest
