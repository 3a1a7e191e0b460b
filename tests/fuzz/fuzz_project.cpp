// SPDX-License-Identifier: MIT

// Reads the input as a device file and, behind a line of four dashes, a design file for that device.

#include "engine/design.h"
#include "engine/designreader.h"
#include "engine/device.h"
#include "engine/devicereader.h"
#include "tests/fuzz/inputfile.h"

#include <QStringList>

#include <string_view>

using namespace mirn::zelengine;

namespace {

// What is refused is refused with a reason, and what is read comes without one.
void check(bool isRead, const QString& error)
{
    if (isRead != error.isEmpty())
        std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size)
{
    constexpr std::string_view Border = "\n----\n";
    const std::string_view input(reinterpret_cast<const char*>(data), size);
    const std::size_t border = input.find(Border);
    const std::string_view deviceText = input.substr(0, border);
    QString error;
    QStringList warnings;
    const auto device
        = readDevice(zelfuzz::inputFile("device.json", deviceText.data(), deviceText.size()), &error, &warnings);
    check(device.has_value(), error);
    if (!device || border == std::string_view::npos)
        return 0;
    const std::string_view designText = input.substr(border + Border.size());
    const auto design = readDesign(
        zelfuzz::inputFile("design.json", designText.data(), designText.size()), *device, &error, &warnings);
    check(design.has_value(), error);
    return 0;
}
