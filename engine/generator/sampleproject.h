// SPDX-License-Identifier: MIT
#pragma once

#include <filesystem>
#include <string>
#include <vector>

namespace mirn::zeldevicegenerator {

struct GeneratedFile
{
    std::string name; // relative to the project folder
    std::string content;
};

// The whole sample project: drawing, device, filter, design and project file. The same bytes on every machine.
[[nodiscard]] std::vector<GeneratedFile> sampleProject();

// Writes the files into a folder, which is made when it is missing. Empty on success, else what went wrong.
[[nodiscard]] std::string writeFiles(const std::vector<GeneratedFile>& files, const std::filesystem::path& folder);

} // namespace mirn::zeldevicegenerator
