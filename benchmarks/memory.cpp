// SPDX-License-Identifier: MIT
#include "benchmarks/memory.h"

#include <malloc.h>
#include <unistd.h>

#include <fstream>

namespace zelbench {

double residentBytes()
{
    malloc_trim(0);
    double total = 0.0;
    double resident = 0.0;
    std::ifstream("/proc/self/statm") >> total >> resident; // in pages
    return resident * static_cast<double>(sysconf(_SC_PAGESIZE));
}

} // namespace zelbench
