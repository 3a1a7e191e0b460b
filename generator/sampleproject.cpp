// SPDX-License-Identifier: MIT
#include "generator/sampleproject.h"

#include "generator/devicefile.h"
#include "generator/haldenfloorplan.h"
#include "generator/haldentypes.h"
#include "generator/sampledesign.h"
#include "generator/sampledrawing.h"

#include <fstream>
#include <system_error>

namespace mirn::zeldevicegenerator {

std::vector<GeneratedFile> sampleProject()
{
    const std::vector<Site> sites = halden::sites();
    return {
        {"halden-h40.svg", sampleDrawing(sites).svg},
        {"device.json",
            deviceFile(halden::DEVICE_NAME, "halden-h40.svg", "filter.txt", haldenTypes(), halden::siteKinds(), sites)},
        {"filter.txt", filterFile(halden::siteKinds(), sites)},
        {"design.json", SAMPLE_DESIGN},
        {"project.json", SAMPLE_PROJECT},
    };
}

std::string writeFiles(const std::vector<GeneratedFile>& files, const std::filesystem::path& folder)
{
    std::error_code error;
    std::filesystem::create_directories(folder, error);
    if (error)
        return folder.string() + ": " + error.message();
    for (const GeneratedFile& file : files) {
        std::ofstream stream(folder / file.name, std::ios::binary);
        stream << file.content;
        stream.close();
        if (!stream)
            return (folder / file.name).string() + ": cannot be written";
    }
    return {};
}

} // namespace mirn::zeldevicegenerator
