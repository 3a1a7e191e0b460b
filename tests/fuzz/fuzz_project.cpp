// SPDX-License-Identifier: MIT

// Reads the input as a device file and, behind a line of four dashes, a design file for that device. Whatever
// the rules allow in the design that was read, they must still allow when it is there: it comes back from a saved file.

#include "engine/designreader.h"
#include "engine/devicereader.h"
#include "engine/model/design.h"
#include "engine/model/device.h"
#include "engine/rules/placementrules.h"
#include "tests/fuzz/inputfile.h"

#include <QStringList>

#include <string_view>

using namespace mirn::zelengine;

using zelfuzz::check;

namespace {

void checkPlaced(const Device& device, const Design& design)
{
    const PlacementRules rules(device, design);
    for (int resource : design.topLevel())
        check(rules.refusalOfPresent(resource).isEmpty());
}

void checkRules(const Device& device, const Design& design)
{
    checkPlaced(device, design);
    const PlacementRules rules(device, design);
    for (int resource : design.all()) {
        for (int site : rules.sitesFor(resource)) {
            const Proposal proposal = rules.propose(resource, site);
            Design changed = design;
            for (const Placement& placement : proposal.placements)
                changed.setSite(placement.resource, -1);
            for (const Placement& placement : proposal.placements)
                changed.setSite(placement.resource, placement.site);
            checkPlaced(device, changed);
        }
    }
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
    // A device is either refused with a reason or read without one.
    check(device.has_value() == error.isEmpty());
    if (!device || border == std::string_view::npos)
        return 0;
    const std::string_view designText = input.substr(border + Border.size());
    const auto design = readDesign(
        zelfuzz::inputFile("design.json", designText.data(), designText.size()), *device, &error, &warnings);
    check(design.has_value() == error.isEmpty());
    if (design)
        checkRules(*device, *design);
    return 0;
}
