// SPDX-License-Identifier: MIT

// Runs a fuzz target once on each file of the folders given, without libFuzzer: the inputs that are kept stay tests for
// every compiler.

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <memory>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(const unsigned char* data, std::size_t size);

namespace {

using std::filesystem::path;

[[noreturn]] void fail(const path& name, const char* reason)
{
    std::fprintf(stderr, "%s: %s\n", name.c_str(), reason);
    std::exit(1);
}

// The files of a folder, in an order that is the same everywhere.
[[nodiscard]] std::vector<path> filesIn(const path& folder)
{
    std::error_code error;
    std::vector<path> files;
    for (const auto& entry : std::filesystem::directory_iterator(folder, error))
        files.push_back(entry.path());
    if (files.empty())
        fail(folder, "no seeds here");
    std::sort(files.begin(), files.end());
    return files;
}

void runFile(const path& file)
{
    // A crash ends the program at once: what it was on must have been said before.
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);
    std::ifstream stream(file, std::ios::binary | std::ios::ate);
    if (!stream)
        fail(file, "cannot be read");
    const auto size = static_cast<std::size_t>(stream.tellg());
    // No longer than the input, so that AddressSanitizer sees whoever reads beyond it.
    const std::unique_ptr<char[]> bytes(new char[size]);
    stream.seekg(0);
    if (!stream.read(bytes.get(), static_cast<std::streamsize>(size)))
        fail(file, "cannot be read");
    LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char*>(bytes.get()), size);
}

} // namespace

int main(int argc, char** argv)
{
    if (argc < 2) {
        std::fprintf(stderr, "usage: %s FOLDER...\n", argv[0]);
        return 2;
    }
    for (int i = 1; i < argc; ++i) {
        for (const path& file : filesIn(argv[i]))
            runFile(file);
    }
    return 0;
}
