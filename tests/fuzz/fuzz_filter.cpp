// SPDX-License-Identifier: MIT

// Reads the input as a filter file.

#include "filter/filterfile.h"
#include "tests/fuzz/inputfile.h"

using namespace mirn::zelchipview;

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    const QString name = zelfuzz::inputFile("filter.txt", reinterpret_cast<const char*>(data), size);
    const std::optional<FilterKinds> kinds = readFilterFile(QFile::encodeName(name).toStdString());
    zelfuzz::check(kinds.has_value());
    for (const QSet<int>& ids : *kinds)
        zelfuzz::check(!ids.isEmpty()); // a kind comes with an element
    return 0;
}
