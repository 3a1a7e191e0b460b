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

// Returns all files of the sample project: drawing, device, filter, design and project file. Their bytes are the same
// on every machine.
[[nodiscard]] std::vector<GeneratedFile> sampleProject();

// Writes the files into a folder, which is created if it is missing. Returns an empty text for success, else the error.
[[nodiscard]] std::string writeFiles(const std::vector<GeneratedFile>& files, const std::filesystem::path& folder);

} // namespace mirn::zeldevicegenerator
