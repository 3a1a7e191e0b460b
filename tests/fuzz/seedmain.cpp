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

void runFile(const path& file)
{
    // A crash ends the program at once: what it was on must have been said before.
    std::printf("%s\n", file.c_str());
    std::fflush(stdout);
    const auto size = static_cast<std::size_t>(std::filesystem::file_size(file));
    // The buffer is no longer than the input, so that AddressSanitizer sees whoever reads beyond it.
    const std::unique_ptr<char[]> bytes(new char[size]);
    std::ifstream stream(file, std::ios::binary);
    if (!stream.read(bytes.get(), static_cast<std::streamsize>(size)))
        std::exit(1);
    LLVMFuzzerTestOneInput(reinterpret_cast<const unsigned char*>(bytes.get()), size);
}

} // namespace

int main(int argc, char** argv)
{
    std::vector<path> files;
    for (int i = 1; i < argc; ++i) {
        for (const auto& entry : std::filesystem::directory_iterator(argv[i]))
            files.push_back(entry.path());
    }
    std::sort(files.begin(), files.end()); // the same everywhere
    for (const path& file : files)
        runFile(file);
    if (files.empty())
        std::fprintf(stderr, "usage: %s FOLDER..., with seeds in them\n", argv[0]);
    return files.empty() ? 1 : 0;
}
